#include "tools/BackupParts.h"

#include <QDir>
#include <QFileInfo>
#include <QObject>
#include <QStandardPaths>

namespace BackupParts {
namespace {

QString mailStore() {
  const QString home = QDir::homePath();
  for (const char* store : {"/.thunderbird", "/.local/share/evolution/mail"}) {
    const QString path = home + QLatin1String(store);
    if (QFileInfo(path).isDir())
      return path;
  }
  return home + QStringLiteral("/Mail");
}

}  // namespace

QString folder(BackupPart part) {
  switch (part) {
    case BackupPart::Preferences:
      return QDir::homePath() + QStringLiteral("/.config");
    case BackupPart::Documents:
      return QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    case BackupPart::Mail:
      return mailStore();
  }
  return {};
}

QString title(BackupPart part) {
  switch (part) {
    case BackupPart::Preferences:
      return QObject::tr("Preferences");
    case BackupPart::Documents:
      return QObject::tr("Documents");
    case BackupPart::Mail:
      return QObject::tr("Mail");
  }
  return {};
}

}  // namespace BackupParts
