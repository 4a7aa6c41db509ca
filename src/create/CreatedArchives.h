#pragma once

#include <QString>
#include <QStringList>

// What a finished compression job made, for the status bar: the archives'
// full paths, or one archive's volumes.
struct CreatedArchives {
  QStringList paths;
  bool volumes = false;

  // "Archive created: ~/Desktop/x.zip", "Archive created: ~/x.7z.part.001
  // in 3 volumes" or "4 archives created in ~/Desktop".
  QString text() const;
  // The folder to show; empty when the archives lie in several folders.
  QString folder() const;
};
