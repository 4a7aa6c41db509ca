#include "engine/FileRemoval.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace FileRemoval {

void removeFileOrFolder(const QString& path) {
  const QFileInfo found(path);
  if (found.isDir() && !found.isSymLink())
    QDir(path).removeRecursively();
  else
    QFile::remove(path);
}

}  // namespace FileRemoval
