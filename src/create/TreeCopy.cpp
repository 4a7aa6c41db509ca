#include "create/TreeCopy.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

namespace TreeCopy {

bool copy(const QString& source, const QString& target) {
  if (QFileInfo::exists(target) || !QFileInfo(source).isDir() || !QDir().mkpath(target))
    return false;
  const QDir from(source);
  QDirIterator entries(source,
                       QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                       QDirIterator::Subdirectories);
  bool copied = true;
  while (entries.hasNext()) {
    const QString path = entries.next();
    const QFileInfo entry = entries.fileInfo();
    const QString destination = target + u'/' + from.relativeFilePath(path);
    if (entry.isSymLink())
      copied &= QFile::link(entry.symLinkTarget(), destination);
    else if (entry.isDir())
      copied &= QDir().mkpath(destination);
    else
      copied &= QFile::copy(path, destination);
  }
  return copied;
}

}  // namespace TreeCopy
