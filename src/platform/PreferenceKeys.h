#pragma once

#include "platform/PreferencesStore.h"

#include <QString>

// Every key of the settings store, spelt once. The names keep the keys'
// own spelling, misspellings included, so that a search for a key finds
// its constant.
namespace PreferenceKeys {

// Extraction.
inline const QString kOpenDestinationAfterExtraction =
    QStringLiteral("openDestinationAfterExtraction");
inline const QString kOverwriteOnExtraction = QStringLiteral("overwriteOnExtraction");
inline const QString kPlaySoundWhenDone = QStringLiteral("playSoundWhenDone");
inline const QString kTrashAfterExtracting = QStringLiteral("trashAfterExtracting");
inline const QString kCreateSurroundingFolderBeforeExtraction =
    QStringLiteral("CreateSurroundingFolderBeforeExtraction");
inline const QString& kAutoremoveMACOSXfolder = PreferencesStore::kAutoremoveMacosxFolder;

// Files handed to Quillet.
inline const QString kExcludeDS_Store = QStringLiteral("excludeDS_Store");
inline const QString kEnableCustomContextMenu = QStringLiteral("enableCustomContextMenu");
inline const QString kPrefUseFisrstNameOfTheArrayAsArchiveName =
    QStringLiteral("prefUseFisrstNameOfTheArrayAsArchiveName");
inline const QString kOnDropCompressionMethod = QStringLiteral("onDropCompressionMethod");
inline const QString kOnDropCompressionLevel = QStringLiteral("onDropCompressionLevel");

// New archives, backup, updates, association.
inline const QString kDefaultCompressionLevel = QStringLiteral("DefaultCompressionLevel");
inline const QString kDefaultBackupDirectory = QStringLiteral("defaultBackupDirectory");
// Absent means on, unlike every other boolean.
inline const QString kAutoCheckForNewVersion = QStringLiteral("autoCheckForNewVersion");
inline const QString kIssupportedfilesassociatedonce =
    QStringLiteral("issupportedfilesassociatedonce");

// The drop zone's hand-over to the selection list (a list of paths).
inline const QString kDroppedFiles = QStringLiteral("droppedFiles");

// Upload and e-mail notice.
inline const QString kFtpaddress = QStringLiteral("ftpaddress");
inline const QString kFtpusername = QStringLiteral("ftpusername");
inline const QString kFtppassword = QStringLiteral("ftppassword");
inline const QString kMailaddress = QStringLiteral("mailaddress");
inline const QString kMailsubject = QStringLiteral("mailsubject");
inline const QString kMailmessage = QStringLiteral("mailmessage");
// "1" and "0", not "YES" and "NO".
inline const QString kAttachlink = QStringLiteral("attachlink");
inline const QString kIncludedate = QStringLiteral("includedate");

// Quillet's own on Linux: compressed tar archives (.tar.gz, ...) open as
// the tree they hold; absent means off.
inline const QString kListCompressedTarArchives = QStringLiteral("listCompressedTarArchives");

// Quillet's own on Linux: the "Open Recent" menu.
inline const QString& kRecentDocuments = PreferencesStore::kRecentDocuments;

inline const QString kYes = QStringLiteral("YES");
inline const QString kNo = QStringLiteral("NO");

}  // namespace PreferenceKeys
