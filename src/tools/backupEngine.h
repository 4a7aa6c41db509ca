#pragma once

#include "platform/ProcessToolRunner.h"
#include "tools/BackupParts.h"
#include "tools/BackupUi.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <atomic>

class Desktop;
class Dialogs;
class QThread;
class ToolRunner;

// The backup tab's controller: measures the home folder's parts, runs the
// backup on a thread of its own while the status window shows its progress,
// stops it, and shows the backup folder.
class backupEngine : public QObject {
  Q_OBJECT

 public:
  // runner serves the measuring on this thread; page receives the tab's
  // widgets; mainWindow fades out while a backup runs (may be null).
  backupEngine(ToolRunner& runner, Dialogs& dialogs, Desktop& desktop, QWidget* page,
               QWidget* mainWindow, QObject* parent = nullptr);
  ~backupEngine() override;

  const BackupUi& ui() const { return ui_; }
  // The restore application copied around each archive.
  void setRestoreBundle(const QString& bundle) { restoreBundle_ = bundle; }

  void awakeFromNib();
  void chkBoxCompressBackup();
  QString getDirSize(const QString& path);
  void btnGetSizes();
  void btnBackupNow();
  void btnStopBackupProcess();
  void btnOpenBackupFolder();

 signals:
  // The status window has gone and the main window is back.
  void backupFinished();

 private:
  void showStatusWindow();
  void hideStatusWindow();
  void fadeMainWindow(qreal opacity);
  void startThread(const QString& folder);
  void threadFinished();
  void partStarted(BackupPart part);
  void partDone(BackupPart part);
  void showStatus(const QString& message);
  QString levelSwitch() const;
  QCheckBox* check(BackupPart part) const;
  QLabel* sizeField(BackupPart part) const;
  QCheckBox* doneMark(BackupPart part) const;
  QProgressBar* spinner(BackupPart part) const;
  QLabel* sizeStat(BackupPart part) const;

  ToolRunner& runner_;
  Dialogs& dialogs_;
  Desktop& desktop_;
  QPointer<QWidget> mainWindow_;
  BackupUi ui_;
  QString restoreBundle_;
  QString backupDir;
  // The backup's tool runs, which Stop reaches from this thread.
  ProcessToolRunner process;
  std::atomic<bool> processTerminated = false;
  QThread* thread_ = nullptr;
  // What the running backup made, and whether a part of it failed.
  QString madeBackup_;
  bool partFailed_ = false;
};
