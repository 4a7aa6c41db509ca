#pragma once

class EntriesModel;
class EntriesProxy;
class OperationStatus;
class QAction;
class QCheckBox;
class QDockWidget;
class QLabel;
class QLineEdit;
class QMainWindow;
class QMenu;
class QPlainTextEdit;
class QProgressBar;
class QTabWidget;
class QTableView;
class QWidget;

// The widgets of the main window that the archive operations drive. The
// shell builds the window (app/MainWindowBuilder); their object names are
// the names the rest of Quillet and its tests know them by.
struct MainWindowUi {
  QMainWindow* mainWindow = nullptr;
  QTabWidget* tabContainer = nullptr;
  // The tool tabs' pages, which their controllers fill.
  QWidget* backupTab = nullptr;
  QWidget* diskImageTab = nullptr;

  QLabel* archiveIconView = nullptr;
  QLabel* sourceArchive4ConvertionIcon = nullptr;
  QLineEdit* filename = nullptr;
  QLineEdit* filepath = nullptr;
  QLineEdit* archivetype = nullptr;
  QLineEdit* filesize = nullptr;
  QLineEdit* CRC32TextBox = nullptr;
  QLineEdit* fieldOpenedArchiveNumberOfFiles = nullptr;
  QProgressBar* loadingArchiveListingLoader = nullptr;
  QProgressBar* compressionSpin = nullptr;
  QTableView* openedArchiveTableView = nullptr;
  EntriesModel* oppenedArchiveArrayController = nullptr;
  // Sits between the listing and the table: its rows are the table's rows.
  EntriesProxy* entriesProxy = nullptr;
  QLineEdit* entriesFilter = nullptr;
  OperationStatus* operationStatus = nullptr;
  QPlainTextEdit* fileContentView = nullptr;

  QCheckBox* chkCreateSurroundingFolderBeforeExtracting = nullptr;
  QCheckBox* chkOverwriteExistingFiles = nullptr;
  QCheckBox* chkOpenDestinationAfterExtraction = nullptr;
  QCheckBox* chkPlaySoundWhenDone = nullptr;
  QCheckBox* chkTrashAfterExtracting = nullptr;

  QAction* openAction = nullptr;
  QAction* btnSwitchToCreate = nullptr;
  QAction* btnExtractAction = nullptr;
  QAction* btnExtractSelected = nullptr;
  QAction* btnTestAction = nullptr;
  QAction* addFilesToArchive = nullptr;
  QAction* btnDeleteSelectedFilesFromArchive = nullptr;
  QAction* btnOpenArchiveFolder = nullptr;
  QMenu* openRecentMenu = nullptr;
  QAction* quitAction = nullptr;
  QAction* aboutAction = nullptr;
  QAction* btnExpandArchiveFilePreview = nullptr;
  QAction* btnConvert = nullptr;
  QAction* btnMD5Generator = nullptr;

  QDockWidget* dropZone = nullptr;
  QDockWidget* drawerObject = nullptr;
};
