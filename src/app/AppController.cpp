#include "app/AppController.h"

#include "app/AboutClass.h"
#include "app/DefaultLevelDisplay.h"
#include "app/Engine.h"
#include "app/FileAssociation.h"
#include "app/FileManagerEntries.h"
#include "app/FilesFromOutside.h"
#include "app/FirstTimeAssociation.h"
#include "app/PreferencesClass.h"
#include "app/UpdateClass.h"
#include "app/WebAddresses.h"
#include "create/ArchiveCreation.h"
#include "create/ClassEmail.h"
#include "create/CreateArchiveWindow.h"
#include "create/classFTP.h"
#include "engine/ToolLocations.h"
#include "platform/Desktop.h"
#include "platform/PreferencesStore.h"
#include "platform/WindowPlacement.h"
#include "quick/contextMenuClass.h"
#include "tools/MD5GeneratorClass.h"

#include <QAction>
#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDialog>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QSignalBlocker>
#include <QSlider>
#include <QStandardPaths>
#include <QTabWidget>
#include <QUrl>

namespace {

constexpr int kFadeInMs = 250;
enum Tab { BackupTab = 2, DiskImageTab = 3 };

}  // namespace

AppController::AppController(Engine& engine, Services services, QObject* parent)
    : QObject(parent),
      engine_(engine),
      services_(std::move(services)),
      about_(new AboutClass(engine.ui().mainWindow)),
      preferences_(
          new PreferencesClass(engine.ui().mainWindow, services_.dialogs, services_.runner,
                               engine.creation()->createArchiveWindow()->defaultLevelActions())),
      firstTimeAssociation_(
          new supportedFilesFirstTimeAssociation(engine.ui().mainWindow, services_.runner)),
      updates_(new UpdateClass(services_.dialogs, services_.desktop, engine.ui().mainWindow)) {
  const ShellActions& shell = engine.shell();
  connect(shell.menuAbout, &QAction::triggered, about_, &AboutClass::menuAbout);
  connect(shell.menuPreferences, &QAction::triggered, this, &AppController::menuPreferences);
  connect(shell.btnBackup, &QAction::triggered, this, &AppController::btnBackup);
  connect(shell.btnDMGUtil, &QAction::triggered, this, &AppController::btnDMGUtil);
  connect(shell.btnWeb, &QAction::triggered, this, &AppController::btnWeb);
  connect(shell.btnCheckForUpdates, &QAction::triggered, this, &AppController::btnCheckForUpdates);
  connect(shell.mnuLatestVersionChanges, &QAction::triggered, updates_,
          &UpdateClass::mnuLatestVersionChanges);
  connect(updates_, &UpdateClass::autoCheckChanged, preferences_->chkAutoUpdateChkBox(),
          &QCheckBox::setChecked);
  connect(preferences_->chkAutoUpdateChkBox(), &QCheckBox::clicked, updates_->chkBoxAutoUpdate(),
          &QCheckBox::setChecked);
  connect(preferences_->btnPreferencesFTPSettings(), &QPushButton::clicked, engine.ftp(),
          &classFTP::btnPreferencesFTPSettings);
  connect(preferences_->btnOpenEmailSettings(), &QPushButton::clicked, engine.email(),
          &ClassEmail::btnOpenEmailSettings);
  connect(shell.btnBlog, &QAction::triggered, this, &AppController::btnBlog);
  connect(shell.btnFacebook, &QAction::triggered, this, &AppController::btnFacebook);
  connect(shell.btnTwitter, &QAction::triggered, this, &AppController::btnTwitter);
  connect(engine.ui().quitAction, &QAction::triggered, this, [this] { services_.terminate(); });
  // Without an open archive the checksum is of the file handed over.
  engine.md5Generator()->setCustomContextMenuPathSource([this] {
    const contextMenuClass* panel = filesFromOutside_ ? filesFromOutside_->contextMenu() : nullptr;
    return panel ? panel->hiddenFileName() : QString();
  });
}

AppController::~AppController() = default;

void AppController::awakeFromNib() {
  QMainWindow* window = engine_.ui().mainWindow;
  window->installEventFilter(this);
  WindowPlacement::centreOnScreen(window);
  window->setWindowOpacity(0.0);
  window->show();
}

void AppController::applicationDidFinishLaunching() {
  QMainWindow* window = engine_.ui().mainWindow;
  auto* fadeIn = new QPropertyAnimation(window, "windowOpacity", window);
  fadeIn->setDuration(kFadeInMs);
  fadeIn->setEndValue(1.0);
  fadeIn->start(QAbstractAnimation::DeleteWhenStopped);
  makeTextViewNonWrapping();
  installFileManagerEntries();
  preferences_->showStoredPreferences();
  if (!FileAssociation::wasOffered())
    firstTimeAssociation_->showFadedIn();
  showExtractionOptions();
  showDefaultLevel();
}

bool AppController::windowShouldClose() {
  services_.terminate();
  return false;
}

bool AppController::application(QCoreApplication*, const QStringList& openFiles) {
  if (!filesFromOutside_)
    filesFromOutside_ = std::make_unique<FilesFromOutside>(services_, *engine_.ui().mainWindow,
                                                           *preferences_->chkExcludeDS_Store());
  filesFromOutside_->openFiles(openFiles);
  return true;
}

void AppController::btnPasswordDlgOK() {
  if (filesFromOutside_)
    filesFromOutside_->btnPasswordDlgOK();
}

void AppController::btnPasswordDlgCancel() {
  services_.terminate();
}

bool AppController::eventFilter(QObject* watched, QEvent* event) {
  if (watched == engine_.ui().mainWindow && event->type() == QEvent::Close) {
    if (!windowShouldClose())
      event->ignore();
    return true;
  }
  return QObject::eventFilter(watched, event);
}

void AppController::menuPreferences() {
  QDialog* window = preferences_->windowPreferences();
  if (!window->isVisible())
    WindowPlacement::centreAndShow(window);
}

void AppController::btnBackup() {
  engine_.ui().tabContainer->setCurrentIndex(BackupTab);
}

void AppController::btnDMGUtil() {
  engine_.ui().tabContainer->setCurrentIndex(DiskImageTab);
}

void AppController::btnWeb() {
  openWebPage(WebAddresses::kHomePage);
}

// The version check itself runs at start-up; this opens the product page.
void AppController::btnCheckForUpdates() {
  openWebPage(WebAddresses::kHomePage);
}

void AppController::btnBlog() {
  openWebPage(WebAddresses::kBlog);
}

void AppController::btnFacebook() {
  openWebPage(WebAddresses::kFacebook);
}

void AppController::btnTwitter() {
  openWebPage(WebAddresses::kTwitter);
}

void AppController::openWebPage(const QString& address) {
  services_.desktop.openUrl(QUrl(address));
}

// Long report lines scroll sideways instead of breaking.
void AppController::makeTextViewNonWrapping() {
  QPlainTextEdit* view = engine_.ui().fileContentView;
  view->setLineWrapMode(QPlainTextEdit::NoWrap);
  view->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
}

void AppController::installFileManagerEntries() {
  FileManagerEntries::installMissing(
      ToolLocations::sharedResourcesFolder() + QStringLiteral("/filemanager"),
      QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation),
      QCoreApplication::applicationFilePath());
}

void AppController::showExtractionOptions() {
  const MainWindowUi& ui = engine_.ui();
  if (PreferencesStore::isYes(QStringLiteral("trashAfterExtracting")))
    ui.chkTrashAfterExtracting->setChecked(true);
  ui.chkOpenDestinationAfterExtraction->setChecked(
      PreferencesStore::isYes(QStringLiteral("openDestinationAfterExtraction")));
  ui.chkOverwriteExistingFiles->setChecked(
      PreferencesStore::isYes(QStringLiteral("overwriteOnExtraction")));
  ui.chkPlaySoundWhenDone->setChecked(PreferencesStore::isYes(QStringLiteral("playSoundWhenDone")));
}

// Shown, not chosen: the switches keep the level the create side started
// with.
void AppController::showDefaultLevel() {
  const DefaultLevelDisplay display =
      DefaultLevelDisplay::of(PreferencesStore::text(QStringLiteral("DefaultCompressionLevel")));
  CreateArchiveWindow* window = engine_.creation()->createArchiveWindow();
  const QSignalBlocker quiet(window->compressionLevelSliderControl());
  window->compressionLevelSliderControl()->setValue(display.sliderPosition);
  window->compressionLevelInfo()->setText(display.label);
}
