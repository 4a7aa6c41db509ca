#pragma once

#include <QDate>
#include <QString>

// The names a backup is known by: the dated archive, the restore
// application that wraps it, and the folder that holds them.
namespace BackupNames {

// "Jan" … "Nov" for 1 … 11; every other number gives "Dec".
QString convertIntMonthToStr(int month);

// Day without a leading zero, month abbreviation and year, as in
// 5.Mar.2011-Quillet-backup.7z.
QString archiveName(const QDate& date);

// The archive's name with every "7z" turned into "app".
QString applicationName(const QString& archiveName);

// "defaultBackupDirectory" with "~" expanded, or ~/Quillet backups.
QString backupFolder();

}  // namespace BackupNames
