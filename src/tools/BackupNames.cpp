#include "tools/BackupNames.h"

#include "platform/PreferenceKeys.h"
#include "platform/PreferencesStore.h"

#include <QDir>

#include <array>

namespace BackupNames {

QString convertIntMonthToStr(int month) {
  static const std::array<const char*, 11> kMonths = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                                      "Jul", "Aug", "Sep", "Oct", "Nov"};
  if (month < 1 || month > 11)
    return QStringLiteral("Dec");
  return QString::fromLatin1(kMonths[month - 1]);
}

QString archiveName(const QDate& date) {
  return QStringLiteral("%1.%2.%3-Quillet-backup.7z")
      .arg(date.day())
      .arg(convertIntMonthToStr(date.month()))
      .arg(date.year());
}

QString applicationName(const QString& archiveName) {
  return QString(archiveName).replace(QStringLiteral("7z"), QStringLiteral("app"));
}

QString backupFolder() {
  QString folder = PreferencesStore::text(PreferenceKeys::kDefaultBackupDirectory);
  if (folder.isEmpty())
    folder = QStringLiteral("~/Quillet backups");
  if (folder == u'~' || folder.startsWith(QStringLiteral("~/")))
    folder.replace(0, 1, QDir::homePath());
  return folder;
}

}  // namespace BackupNames
