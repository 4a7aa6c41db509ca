#pragma once

class QCheckBox;
class QFrame;
class QLabel;
class QProgressBar;
class QPushButton;
class QWidget;

// The backup tab and its status window. The object names are the names
// the rest of Quillet and its tests know the widgets by.
struct BackupUi {
  QCheckBox* chkAppsPrefs = nullptr;
  QCheckBox* chkDox = nullptr;
  QCheckBox* chkEmail = nullptr;
  QLabel* backUpAppPrefsSize = nullptr;
  QLabel* backUpDocsSize = nullptr;
  QLabel* backUpEmail = nullptr;
  QLabel* totalBackUpSize = nullptr;
  QLabel* totalBackupFolderSize = nullptr;
  QLabel* backupFolderPath = nullptr;
  QCheckBox* chkCompressBackup = nullptr;
  QCheckBox* chkMaximumCompression = nullptr;
  QLabel* compressionNote = nullptr;
  QPushButton* btnGetSizes = nullptr;
  QPushButton* btnBackupNow = nullptr;
  QPushButton* btnOpenBackupFolder = nullptr;
  QLabel* currentUser1 = nullptr;
  QLabel* currentUser2 = nullptr;
  QLabel* currentUser3 = nullptr;
  QLabel* currentUser4 = nullptr;

  // The status window that slides in while a backup runs.
  QFrame* backUpWindow = nullptr;
  QCheckBox* chkAppsIndicator = nullptr;
  QCheckBox* chkDocsIndicator = nullptr;
  QCheckBox* chkMailIndicator = nullptr;
  QProgressBar* preferencesBackupSpin = nullptr;
  QProgressBar* documentsBackupSpin = nullptr;
  QProgressBar* emailBackupSpin = nullptr;
  QLabel* prefsFileSizeStat = nullptr;
  QLabel* docsFileSizeStat = nullptr;
  QLabel* mailFileSizeStat = nullptr;
  QLabel* totalFileSizeStat = nullptr;
  QProgressBar* backupProgressIndicator = nullptr;
  QPushButton* btnStopBackupProcess = nullptr;
};

// Lays the tab out on page and makes the status window (a top-level window,
// owned by page).
BackupUi buildBackupUi(QWidget* page);
