#include "engine/ToolLeftovers.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

ToolLeftovers::ToolLeftovers(const QString& archivePath)
    : archivePath_(QFileInfo(archivePath).absoluteFilePath()), before_(present()) {}

QStringList ToolLeftovers::present() const {
  QStringList found;
  const QFileInfo sevenZipTemporary(archivePath_ + QStringLiteral(".tmp"));
  if (sevenZipTemporary.exists() || sevenZipTemporary.isSymLink())
    found << sevenZipTemporary.filePath();
  const QDir folder = QFileInfo(archivePath_).dir();
  for (const QString& name :
       folder.entryList({QStringLiteral("ARJTEMP.$*")}, QDir::Files | QDir::Hidden | QDir::System))
    found << folder.filePath(name);
  return found;
}

QStringList ToolLeftovers::removeNew() const {
  QStringList removed;
  for (const QString& path : present()) {
    if (!before_.contains(path) && QFile::remove(path))
      removed << path;
  }
  return removed;
}
