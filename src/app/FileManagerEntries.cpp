#include "app/FileManagerEntries.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

namespace FileManagerEntries {
namespace {

struct FileManager {
  QString shipped;    // below the shipped folder
  QString installed;  // below the data home
  QString compress;
  QString extract;
};

const FileManager kFileManagers[] = {
    {"kio", "kio/servicemenus", "quillet-compress.desktop", "quillet-extract.desktop"},
    {"nautilus", "nautilus/scripts", "Compress with Quillet", "Extract with Quillet"},
};

// The shipped entries name the program as "@QUILLET@"; the copy names the
// program that installs it, so it works wherever Quillet was installed.
void copyEntry(const QString& from, const QString& to, const QString& program) {
  QFile shipped(from);
  QSaveFile copy(to);
  if (!shipped.open(QIODevice::ReadOnly) || !copy.open(QIODevice::WriteOnly))
    return;
  copy.write(shipped.readAll().replace("@QUILLET@", QFile::encodeName(program)));
  if (copy.commit())
    QFile::setPermissions(
        to, QFile::permissions(to) | QFile::ExeUser | QFile::ExeGroup | QFile::ExeOther);
}

}  // namespace

void installMissing(const QString& shippedFolder, const QString& dataHome, const QString& program) {
  for (const FileManager& manager : kFileManagers) {
    const QDir installed(dataHome + u'/' + manager.installed);
    QDir().mkpath(installed.path());
    if (QFileInfo::exists(installed.filePath(manager.compress)))
      continue;
    const QDir shipped(shippedFolder + u'/' + manager.shipped);
    for (const QString& entry : {manager.compress, manager.extract})
      copyEntry(shipped.filePath(entry), installed.filePath(entry), program);
  }
}

}  // namespace FileManagerEntries
