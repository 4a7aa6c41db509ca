#include "app/Engine.h"

#include "app/ArchiveDrops.h"
#include "app/MainWindowBuilder.h"
#include "create/ArchiveCreation.h"
#include "create/ClassEmail.h"
#include "create/CreateArchiveListView.h"
#include "create/CreateArchiveWindow.h"
#include "create/CreateTab.h"
#include "create/JobSettings.h"
#include "create/classFTP.h"
#include "engine/ArchiveEditing.h"
#include "engine/ArchiveTest.h"
#include "engine/ArchiveType.h"
#include "engine/EngineContext.h"
#include "engine/EntriesModel.h"
#include "engine/EntryOpening.h"
#include "engine/Extraction.h"
#include "engine/OperationStatus.h"
#include "engine/PasswordPanel.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/PreferencesStore.h"
#include "platform/ResourceIcons.h"
#include "tools/ConverterWindow.h"
#include "tools/DMGUtility.h"
#include "tools/FilePreview.h"
#include "tools/MD5GeneratorClass.h"
#include "tools/backupEngine.h"
#include "tools/converter.h"

#include <QAction>
#include <QDockWidget>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>

namespace {

constexpr int kTabSwitchIntervalMs = 111;
constexpr int kPanelOk = 1;
constexpr int kRecentDocumentsKept = 10;
constexpr int kArchiveIconSize = 64;

enum Tab { OpenedArchiveTab = 0, CreateArchiveTab = 1, BackupTab = 2, DiskImageTab = 3 };

}  // namespace

Engine::Engine(ToolRunner& runner, ToolRunner& jobRunner, Dialogs& dialogs, Desktop& desktop,
               QObject* parent)
    : QObject(parent),
      dialogs_(dialogs),
      createTab_(new CreateTab(runner, dialogs, desktop)),
      ui_(buildMainWindow(dialogs, createTab_, shell_)),
      enterPasswordDlg_(new PasswordPanel(ui_.mainWindow)),
      icons_(desktop),
      opener_(runner, icons_, *this) {
  JobSettings::shared().init();
  creation_ = new ArchiveCreation(
      jobRunner, dialogs,
      {ui_.mainWindow, createTab_, ui_.fileContentView, ui_.compressionSpin, ui_.operationStatus},
      this);
  ftp_ = new classFTP(runner, dialogs, ui_.mainWindow);
  email_ = new ClassEmail(ui_.mainWindow);
  connect(creation_->createArchiveWindow()->btnFTPSettings(), &QPushButton::clicked, ftp_,
          &classFTP::btnFTPSettings);
  connect(creation_->createArchiveWindow()->btnOpenEmailSettings(), &QPushButton::clicked, email_,
          &ClassEmail::btnOpenEmailSettings);
  const EngineContext context{runner, dialogs, desktop, opener_, ui_, enterPasswordDlg_};
  extraction_ = new Extraction(context, this);
  test_ = new ArchiveTest(context, this);
  editing_ = new ArchiveEditing(context, *creation_, this);
  entryOpening_ = new EntryOpening(context, this);
  drops_ = new ArchiveDrops(
      ui_.tabContainer->widget(OpenedArchiveTab), dialogs,
      {[this](const QString& archive) { openDialog({archive}, kPanelOk); },
       [this] { return opener_.archive().isOpen(); }, [this] { return opener_.archive().filename; },
       [this](const QStringList& paths) { editing_->updateArchive(paths, kPanelOk); }},
      this);
  converter_ = new converter(context, this);
  filePreview_ = new FilePreview(context, this);
  md5Generator_ = new MD5GeneratorClass(runner, ui_.filepath, ui_.mainWindow, this);
  connect(ui_.btnConvert, &QAction::triggered, this, &Engine::btnConvert);
  connect(ui_.btnMD5Generator, &QAction::triggered, md5Generator_,
          &MD5GeneratorClass::btnMD5Generator);
  backup_ = new backupEngine(runner, dialogs, desktop, ui_.backupTab, ui_.mainWindow, this);
  dmgUtility_ = new DMGUtility(dialogs, ui_.diskImageTab, ui_.mainWindow, this);
  connect(ui_.btnSwitchToCreate, &QAction::triggered, this, &Engine::btnSwitchToCreate);
  connect(ui_.openAction, &QAction::triggered, this, &Engine::btnOpenAction);
  connect(ui_.quitAction, &QAction::triggered, ui_.mainWindow, &QMainWindow::close);
  connect(ui_.btnExpandArchiveFilePreview, &QAction::toggled, ui_.drawerObject,
          &QDockWidget::setVisible);
  connect(ui_.drawerObject, &QDockWidget::visibilityChanged, ui_.btnExpandArchiveFilePreview,
          [this](bool visible) {
            if (!visible && !ui_.mainWindow->isMinimized())
              ui_.btnExpandArchiveFilePreview->setChecked(false);
          });
  connect(ui_.addFilesToArchive, &QAction::triggered, this, &Engine::addFiles);
  connect(ui_.openedArchiveTableView->selectionModel(), &QItemSelectionModel::selectionChanged,
          this, &Engine::updateActions);
  connect(ui_.tabContainer, &QTabWidget::currentChanged, this, &Engine::updateActions);
  connect(ui_.tabContainer, &QTabWidget::currentChanged, ui_.operationStatus,
          &OperationStatus::clear);
  connect(ui_.operationStatus, &OperationStatus::showFolderRequested, this,
          [&desktop](const QString& folder) { desktop.showFolder(folder); });
  updateActions();
  connect(enterPasswordDlg_, &PasswordPanel::okPressed, this, &Engine::btnPasswordProtectedDlgOK);
  connect(enterPasswordDlg_, &PasswordPanel::closePressed, this, &Engine::btnClosePasswordDlg);
  rebuildRecentMenu();

  connect(&tabSwitchTimer_, &QTimer::timeout, this, &Engine::tabSwitchObserver);
  tabSwitchTimer_.start(kTabSwitchIntervalMs);
}

Engine::~Engine() {
  // A running job is stopped while the windows it reports to still exist.
  delete creation_;
  delete ui_.mainWindow;
}

void Engine::btnSwitchToCreate() {
  ui_.tabContainer->setCurrentIndex(CreateArchiveTab);
}

void Engine::btnConvert() {
  if (ui_.filepath->text().isEmpty()) {
    dialogs_.alert(QStringLiteral("No archive loaded."),
                   QStringLiteral("Please open an archive first."), QStringLiteral("OK"));
    return;
  }
  if (!converter_->mainWindow()->isVisible())
    converter_->centreAndShow();
}

void Engine::btnOpenAction() {
  ui_.tabContainer->setCurrentIndex(OpenedArchiveTab);
  Dialogs::OpenPanel panel;
  panel.title = QStringLiteral("Select archive to open");
  panel.extensions = ArchiveType::openableExtensions();
  const QStringList chosen = dialogs_.chooseToOpen(ui_.mainWindow, panel);
  openDialog(chosen, chosen.isEmpty() ? 0 : kPanelOk);
}

void Engine::openDialog(const QStringList& sheet, int returnCode) {
  if (returnCode != kPanelOk || sheet.isEmpty())
    return;
  opener_.open(sheet.first());
  if (opener_.archive().isOpen() && !opener_.listsContents()) {
    // The rows of the archive opened before stay; they must not pass for
    // this one's.
    QString message =
        tr("Quillet does not list the contents of .%1 archives").arg(opener_.archive().archivetype);
    if (ui_.oppenedArchiveArrayController->rowCount() > 0)
      message += tr("; the rows shown are those of the archive opened before");
    ui_.operationStatus->showFailure(message, QString());
  }
}

void Engine::btnPasswordProtectedDlgOK() {
  opener_.passwordEntered(enterPasswordDlg_->passwordTextField()->text());
}

void Engine::btnClosePasswordDlg() {
  opener_.passwordPanelClosed();
}

void Engine::fillListBoxWithArchiveContent() {
  opener_.fillListBoxWithArchiveContent();
}

void Engine::tabSwitchObserver() {
  switch (ui_.tabContainer->currentIndex()) {
    case CreateArchiveTab:
      ui_.dropZone->show();
      ui_.drawerObject->hide();
      ui_.btnExpandArchiveFilePreview->setChecked(false);
      break;
    case OpenedArchiveTab:
      ui_.dropZone->hide();
      break;
    case BackupTab:
    case DiskImageTab:
      ui_.dropZone->hide();
      ui_.drawerObject->hide();
      ui_.btnExpandArchiveFilePreview->setChecked(false);
      break;
    default:
      break;
  }
}

void Engine::updateActions() {
  const bool open = opener_.archive().isOpen();
  const bool selected = open && ui_.openedArchiveTableView->selectionModel()->hasSelection();
  for (QAction* action :
       {ui_.btnExtractAction, ui_.btnTestAction, ui_.btnOpenArchiveFolder, ui_.btnConvert})
    action->setEnabled(open);
  ui_.btnExtractSelected->setEnabled(selected);
  ui_.btnDeleteSelectedFilesFromArchive->setEnabled(selected);
  ui_.addFilesToArchive->setEnabled(open || ui_.tabContainer->currentIndex() == CreateArchiveTab);
}

void Engine::addFiles() {
  if (ui_.tabContainer->currentIndex() == CreateArchiveTab)
    createTab_->list()->btnAddContent();
  else
    editing_->addFilesToArchive();
}

void Engine::startSpinner() {
  ui_.loadingArchiveListingLoader->show();
}

void Engine::stopSpinner() {
  ui_.loadingArchiveListingLoader->hide();
}

void Engine::showArchive(const OpenedArchive& archive) {
  ui_.CRC32TextBox->setText(archive.crc32);
  ui_.filename->setText(archive.filename);
  ui_.filepath->setText(archive.filepath);
  ui_.filepath->setCursorPosition(0);
  ui_.mainWindow->setWindowTitle(archive.filepath);
  ui_.filesize->setText(archive.filesize);
  ui_.archivetype->setText(archive.archivetype);
  const QString icon = ArchiveType::iconResource(archive.archivetype);
  if (!icon.isEmpty()) {
    const QPixmap image = ResourceIcons::named(icon).pixmap(kArchiveIconSize);
    ui_.archiveIconView->setPixmap(image);
    if (ArchiveType::setsConverterIcon(archive.archivetype))
      ui_.sourceArchive4ConvertionIcon->setPixmap(image);
  }
  ui_.mainWindow->statusBar()->clearMessage();
  // Nothing of the previous archive stays on screen.
  ui_.fileContentView->clear();
  ui_.entriesFilter->clear();
  updateActions();
}

void Engine::noteRecentDocument(const QString& path) {
  QStringList recent = PreferencesStore::list(PreferencesStore::kRecentDocuments);
  recent.removeAll(path);
  recent.prepend(path);
  PreferencesStore::setList(PreferencesStore::kRecentDocuments,
                            recent.mid(0, kRecentDocumentsKept));
  rebuildRecentMenu();
}

bool Engine::passwordPanelVisible() const {
  return enterPasswordDlg_->isVisible();
}

void Engine::showPasswordPanel() {
  enterPasswordDlg_->centreAndShow();
}

void Engine::hidePasswordPanel() {
  enterPasswordDlg_->hide();
}

void Engine::showRows(const ArchiveEntries& rows) {
  ui_.oppenedArchiveArrayController->setEntries(rows);
  ui_.fieldOpenedArchiveNumberOfFiles->setText(
      QString::asprintf("%i", static_cast<int>(rows.size())));
  updateActions();
}

void Engine::reportProblem(const ToolProblem& problem) {
  EngineContext::report(ui_, dialogs_, problem, QString());
}

void Engine::rebuildRecentMenu() {
  QMenu* menu = ui_.openRecentMenu;
  menu->clear();
  const QStringList recent = PreferencesStore::list(PreferencesStore::kRecentDocuments);
  for (const QString& path : recent) {
    QAction* action = menu->addAction(QFileInfo(path).fileName());
    action->setToolTip(path);
    action->setStatusTip(path);
    connect(action, &QAction::triggered, this, [this, path] {
      ui_.tabContainer->setCurrentIndex(OpenedArchiveTab);
      openDialog({path}, kPanelOk);
    });
  }
  menu->setEnabled(!recent.isEmpty());
  if (!recent.isEmpty()) {
    menu->addSeparator();
    connect(menu->addAction(tr("Clear Menu")), &QAction::triggered, this, [this] {
      PreferencesStore::setList(PreferencesStore::kRecentDocuments, {});
      rebuildRecentMenu();
    });
  }
}
