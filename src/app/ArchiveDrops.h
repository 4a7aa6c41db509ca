#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class Dialogs;
class QWidget;

// Drops on the archive tab: an archive opens; other files, with an archive
// open, are offered for adding to it.
class ArchiveDrops : public QObject {
  Q_OBJECT

 public:
  struct Actions {
    std::function<void(const QString& archive)> open;
    std::function<bool()> archiveOpen;
    std::function<QString()> archiveName;
    std::function<void(const QStringList& paths)> add;
  };

  ArchiveDrops(QWidget* target, Dialogs& dialogs, Actions actions, QObject* parent = nullptr);

  // What a drop of these local paths does; true when it did something.
  bool dropped(const QStringList& paths);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Dialogs& dialogs_;
  Actions actions_;
};
