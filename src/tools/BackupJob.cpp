#include "tools/BackupJob.h"

#include "create/FolderSize.h"
#include "create/TextFile.h"
#include "create/TreeCopy.h"
#include "engine/FileRemoval.h"
#include "tools/BackupNames.h"
#include "tools/BackupSizeText.h"

#include <QDate>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

namespace {

constexpr int kSizeIntervalMs = 111;

}  // namespace

int backupDirSize(ToolRunner& runner, const QString& path) {
  return BackupSizeText::bytesFromDu(runner.run(FolderSize::duRun(path)).output);
}

BackupJob::BackupJob(BackupRequest request, ToolRunner& process,
                     std::atomic<bool>& processTerminated)
    : request_(std::move(request)), process_(process), processTerminated_(processTerminated) {}

void BackupJob::threadProcedure() {
  const QString archive = BackupNames::archiveName(QDate::currentDate());
  removeEarlierBackup(archive);

  // Fires while the tool runs: waiting for it turns this thread's events.
  QTimer sizeTimer;
  QObject::connect(&sizeTimer, &QTimer::timeout, [this] { getFileSizes(); });
  sizeTimer.start(kSizeIntervalMs);

  for (const BackupPart part : request_.parts) {
    if (processTerminated_)
      break;
    emit partStarted(part);
    ToolRun run;
    run.program = request_.sevenZip;
    run.arguments = {QStringLiteral("a"),       QStringLiteral("-t7z"), archive,
                     BackupParts::folder(part), request_.levelSwitch,   QStringLiteral("-ssc"),
                     QStringLiteral("-y")};
    run.childDirectory = request_.backupFolder;
    const ToolResult result = process_.run(run);
    if (!result.succeeded() && !processTerminated_)
      emit partFailed(part, failureOf(result, BackupParts::folder(part)));
    emit partDone(part);
  }
  sizeTimer.stop();
  if (!request_.parts.isEmpty() && !processTerminated_)
    package(archive);
}

// 7za names a missing folder without saying what is wrong with it.
QString BackupJob::failureOf(const ToolResult& result, const QString& folder) {
  if (!result.started)
    return tr("7za could not be started");
  if (!QFileInfo::exists(folder))
    return tr("%1 does not exist").arg(folder);
  return result.lastErrorLine();
}

void BackupJob::removeEarlierBackup(const QString& archive) const {
  const QDir folder(request_.backupFolder);
  FileRemoval::removeFileOrFolder(folder.filePath(archive));
  FileRemoval::removeFileOrFolder(folder.filePath(BackupNames::applicationName(archive)));
}

// Failures here are not reported: whatever could be done stays done.
void BackupJob::package(const QString& archive) {
  const QDir folder(request_.backupFolder);
  const QString archivePath = folder.filePath(archive);
  // A part whose folder was missing leaves no archive to wrap.
  if (!QFileInfo(archivePath).isFile())
    return;
  const QString application = folder.filePath(BackupNames::applicationName(archive));
  TreeCopy::copy(request_.restoreBundle, application);
  const QString resources = application + QStringLiteral("/Contents/Resources");
  QDir().mkpath(resources);
  QFile::rename(archivePath, resources + u'/' + archive);
  TextFile::write(resources + QStringLiteral("/archive"), archive, QStringConverter::Utf16);
  emit packaged(application);
}

void BackupJob::getFileSizes() {
  const QString written =
      request_.backupFolder + u'/' + BackupNames::archiveName(QDate::currentDate());
  const QString temporary = written + QStringLiteral(".tmp");
  // 7-Zip writes into the .tmp file and renames it when done.
  const bool writing = QFileInfo::exists(temporary);
  if (writing || QFileInfo::exists(written))
    emit archiveSizeChanged(
        BackupSizeText::folder(backupDirSize(sizes_, writing ? temporary : written)));
}
