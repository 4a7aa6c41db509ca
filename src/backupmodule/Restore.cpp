#include "backupmodule/Restore.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace {

QString sevenZip() {
  const QString tool = QStandardPaths::findExecutable(QStringLiteral("7za"));
  return tool.isEmpty() ? QStandardPaths::findExecutable(QStringLiteral("7z")) : tool;
}

QString extract(const QString& archive, const QString& into, const WaitForTool& wait) {
  const QString program = sevenZip();
  if (program.isEmpty())
    return QStringLiteral("7za was not found; install the Debian package p7zip-full");
  QProcess tool;
  if (!BundledProgram::startSevenZip(
          tool, program,
          {QStringLiteral("x"), QStringLiteral("-y"), QStringLiteral("-bd"),
           QStringLiteral("-o") + into, QStringLiteral("--"), archive}))
    return tool.errorString();
  wait(tool);
  if (tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0) {
    const QString errors = QString::fromLocal8Bit(tool.readAllStandardError()).simplified();
    return errors.isEmpty() ? QStringLiteral("7za stopped with status %1").arg(tool.exitCode())
                            : errors;
  }
  return {};
}

class Merge {
 public:
  Merge(const QString& home, RestoreResult& result) : home_(home), result_(result) {}

  void item(const QString& staged, const QString& destination) {
    const QFileInfo from(staged);
    const QFileInfo to(destination);
    if (from.isDir() && !from.isSymLink()) {
      if (to.exists() && !(to.isDir() && !to.isSymLink())) {
        keep(destination);
        return;
      }
      QDir().mkpath(destination);
      const QDir folder(staged);
      for (const QString& name :
           folder.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
        item(folder.filePath(name), destination + u'/' + name);
      return;
    }
    if (to.exists() || to.isSymLink()) {
      if ((to.isDir() && !to.isSymLink()) || to.lastModified() > from.lastModified()) {
        keep(destination);
        return;
      }
      QFile::remove(destination);
    }
    if (QFile::rename(staged, destination) || QFile::copy(staged, destination))
      ++result_.restoredFiles;
    else
      result_.error = QStringLiteral("%1 could not be written").arg(destination);
  }

 private:
  void keep(const QString& destination) {
    result_.kept << QDir(home_).relativeFilePath(destination);
  }

  QString home_;
  RestoreResult& result_;
};

}  // namespace

QString destinationOf(const QString& topLevelName, const QString& home) {
  if (topLevelName == u"mail")
    return home + QStringLiteral("/.local/share/evolution/mail");
  return home + u'/' + topLevelName;
}

RestoreResult restoreBackup(const QString& archive, const QString& home, const WaitForTool& wait) {
  RestoreResult result;
  // Unpacked inside the home folder, so that files move into place
  // without being copied again.
  QTemporaryDir staging(home + QStringLiteral("/.backupmodule-XXXXXX"));
  if (!staging.isValid()) {
    result.error =
        QStringLiteral("no room for unpacking in %1: %2").arg(home, staging.errorString());
    return result;
  }
  result.error = extract(archive, staging.path(), wait);
  if (!result.error.isEmpty())
    return result;
  Merge merge(home, result);
  const QDir unpacked(staging.path());
  for (const QString& name :
       unpacked.entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System))
    merge.item(unpacked.filePath(name), destinationOf(name, home));
  result.succeeded = result.error.isEmpty();
  return result;
}
