#pragma once

#include <QString>
#include <QStringList>

// The temporary files an archiving tool leaves beside an archive it was
// changing when it failed or was stopped: 7-Zip's "<archive>.tmp" and arj's
// "ARJTEMP.$nn". Only those that appeared during the run are removed; a
// file of that name the user had before is never touched.
class ToolLeftovers {
 public:
  explicit ToolLeftovers(const QString& archivePath);

  // Removes what the run left behind; returns the removed paths.
  QStringList removeNew() const;

 private:
  QStringList present() const;

  QString archivePath_;
  QStringList before_;
};
