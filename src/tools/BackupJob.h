#pragma once

#include "platform/ProcessToolRunner.h"
#include "tools/BackupParts.h"

#include <QList>
#include <QObject>
#include <QString>

#include <atomic>

class ToolRunner;

// Everything a backup reads, taken from the tab when it starts, so that the
// worker never touches a widget.
struct BackupRequest {
  QString backupFolder;
  QList<BackupPart> parts;  // the chosen ones, in the fixed order
  QString levelSwitch;      // -mx9, -mx5 or -mx0
  QString restoreBundle;    // backupmodule.app
  QString sevenZip;
};

// The backup itself, run on its own thread: each chosen part goes into
// today's archive, which then moves into a copy of the restore application.
// Everything it has to show goes out through signals, which reach the
// window queued.
class BackupJob : public QObject {
  Q_OBJECT

 public:
  // process runs the archiving tool, so that Stop can end it; the flag is
  // set by Stop and read between parts.
  BackupJob(BackupRequest request, ToolRunner& process, std::atomic<bool>& processTerminated);

  void threadProcedure();

 signals:
  void partStarted(BackupPart part);
  void partDone(BackupPart part);
  void archiveSizeChanged(const QString& sizeText);
  // The restore application is in place.
  void packaged(const QString& application);
  // A part's tool run failed or warned; the backup goes on regardless.
  void partFailed(BackupPart part, const QString& message);

 private:
  static QString failureOf(const ToolResult& result, const QString& folder);
  void removeEarlierBackup(const QString& archive) const;
  void package(const QString& archive);
  void getFileSizes();

  BackupRequest request_;
  ToolRunner& process_;
  std::atomic<bool>& processTerminated_;
  // The size timer's own: the archiving tool's runner is busy waiting.
  ProcessToolRunner sizes_;
};

// The size of a folder or file as du counts it, in bytes wrapped to 32
// bits, read the way the backup tab reads it.
int backupDirSize(ToolRunner& runner, const QString& path);
