#include "engine/OwnTemporaryFolder.h"

#include <QDir>
#include <QObject>
#include <QStandardPaths>

#include <cerrno>

#include <sys/stat.h>
#include <unistd.h>

namespace OwnTemporaryFolder {
namespace {

bool isOwnFolder(const QByteArray& path) {
  struct stat status {};
  return ::lstat(path.constData(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == ::getuid();
}

}  // namespace

QString path() {
  const QString base =
      QDir::cleanPath(QStandardPaths::writableLocation(QStandardPaths::TempLocation));
  return base + QStringLiteral("/quillet-") + QString::number(::getuid()) + u'/';
}

bool ensure() {
  const QByteArray folder = QFile::encodeName(path());
  if (::mkdir(folder.constData(), S_IRWXU) != 0 && errno != EEXIST)
    return false;
  return isOwnFolder(folder.chopped(1));
}

QString unusableTitle() {
  return QObject::tr("No temporary folder");
}

QString unusableMessage() {
  return QObject::tr(
             "Quillet cannot use its temporary folder %1: it cannot be made, or it is not "
             "a folder of yours. Nothing was done.")
      .arg(path());
}

}  // namespace OwnTemporaryFolder
