#include "app/PreferencesClass.h"

#include "app/AssociateNowButton.h"
#include "app/DefaultLevelDisplay.h"
#include "app/OnDropSwitches.h"
#include "platform/Dialogs.h"
#include "platform/FormButtons.h"
#include "platform/ObjectNames.h"
#include "platform/PreferenceKeys.h"
#include "platform/PreferencesStore.h"
#include "platform/ResourceIcons.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <array>

namespace {

using namespace PreferenceKeys;

enum Tab { General, Backup, Internet, Misc, ContextMenu, Drop };

constexpr int kIconSize = 22;
constexpr int kTabBarMargin = 8;

// The on-drop method pop-up's items, in their order.
const std::array<const QString*, 5> kDropMethods = {
    &OnDropSwitches::kZip, &OnDropSwitches::kSevenZip, &OnDropSwitches::kRar,
    &OnDropSwitches::kArj, &OnDropSwitches::kLha,
};
// The on-drop level pop-up: item i stands for the text "i".
const std::array<const char*, 5> kDropLevelLabels = {"Lowest", "Low", "Normal", "High", "Ultra"};
// The level pop-up starts at "Normal", the level stored when none is.
constexpr int kDropLevelAsBuilt = 2;

const std::array<void (PreferencesClass::*)(), 5> kDropMethodActions = {
    &PreferencesClass::dropATZip, &PreferencesClass::dropAT7z,  &PreferencesClass::dropATRAR,
    &PreferencesClass::dropATARJ, &PreferencesClass::dropATLHA,
};
const std::array<void (PreferencesClass::*)(), 5> kDropLevelActions = {
    &PreferencesClass::dropCL0, &PreferencesClass::dropCL1, &PreferencesClass::dropCL2,
    &PreferencesClass::dropCL3, &PreferencesClass::dropCL4,
};

const QString kAssociateNow = QStringLiteral("Associate now");

void storeCheckbox(const QCheckBox* checkbox, const QString& key) {
  PreferencesStore::setYes(key, checkbox->isChecked());
}

// Start-up switches these on for "YES" and otherwise leaves them as built.
void switchOnWhenYes(QCheckBox* checkbox, const QString& key) {
  if (PreferencesStore::isYes(key))
    checkbox->setChecked(true);
}

QLabel* explanation(const QString& text) {
  auto* label = new QLabel(text);
  label->setWordWrap(true);
  return label;
}

// Pop-ups keep their natural width instead of spanning the window.
QFormLayout* form(QWidget* group) {
  auto* layout = new QFormLayout(group);
  layout->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
  return layout;
}

QWidget* page(std::initializer_list<QWidget*> groups) {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  for (QWidget* group : groups)
    layout->addWidget(group);
  layout->addStretch(1);
  return page;
}

}  // namespace

PreferencesClass::PreferencesClass(QWidget* parent, Dialogs& dialogs, ToolRunner& runner,
                                   const QList<QAction*>& defaultLevelChoices)
    : QObject(parent),
      dialogs_(dialogs),
      runner_(runner),
      windowPreferences_(named(new QDialog(parent), "windowPreferences")),
      tabContainer_(named(new QTabWidget, "tabContainer")) {
  windowPreferences_->setWindowTitle(tr("Preferences"));
  tabContainer_->setIconSize(QSize(kIconSize, kIconSize));
  tabContainer_->addTab(buildGeneral(defaultLevelChoices),
                        ResourceIcons::themed("configure", "quillet"), tr("General"));
  tabContainer_->addTab(buildBackup(), ResourceIcons::themed("drive-harddisk", "archive"),
                        tr("Backup"));
  tabContainer_->addTab(buildInternet(),
                        ResourceIcons::themed("applications-internet", "application"),
                        tr("Internet"));
  tabContainer_->addTab(buildMisc(), ResourceIcons::themed("preferences-other", "document"),
                        tr("Misc"));
  tabContainer_->addTab(buildContextMenu(), ResourceIcons::themed("system-file-manager", "folder"),
                        tr("Context menu"));
  tabContainer_->addTab(buildDrop(), ResourceIcons::themed("document-import", "dropzone"),
                        tr("Drop"));

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  named(buttons->button(QDialogButtonBox::Close), "btnClosePreferencesWindow");
  connect(buttons, &QDialogButtonBox::rejected, this, &PreferencesClass::btnClosePreferencesWindow);

  auto* layout = new QVBoxLayout(windowPreferences_);
  layout->addWidget(tabContainer_, 1);
  layout->addWidget(buttons);
  // All six tabs stay in sight, each with its whole label.
  tabContainer_->tabBar()->setUsesScrollButtons(false);
  tabContainer_->tabBar()->setElideMode(Qt::ElideNone);
  tabContainer_->setMinimumWidth(tabContainer_->tabBar()->sizeHint().width() + kTabBarMargin);
  windowPreferences_->setMinimumHeight(360);
  keepEnterForTheAnswers(windowPreferences_);
}

QCheckBox* PreferencesClass::checkbox(const char* objectName, const QString& text,
                                      void (PreferencesClass::*action)()) {
  auto* box = named(new QCheckBox(text), objectName);
  connect(box, &QCheckBox::clicked, this, action);
  return box;
}

QWidget* PreferencesClass::buildGeneral(const QList<QAction*>& defaultLevelChoices) {
  auto* extraction = new QGroupBox(tr("Extracting"));
  chkCreateSurroundingFolderBeforeExtraction_ =
      checkbox("chkCreateSurroundingFolderBeforeExtraction",
               tr("Extract files opened with Quillet into a folder named after the archive"),
               &PreferencesClass::chkCreateSurroundingFolderBeforeExtractionAction);
  chkRemoveMACOSXFolder_ =
      checkbox("chkRemoveMACOSXFolder", tr("Remove the “__MACOSX” folder that Mac archives carry"),
               &PreferencesClass::chkBoxRemoveMACOSXFolder);
  auto* extractionLayout = new QVBoxLayout(extraction);
  extractionLayout->addWidget(chkCreateSurroundingFolderBeforeExtraction_);
  extractionLayout->addWidget(chkRemoveMACOSXFolder_);

  auto* creation = new QGroupBox(tr("New archives"));
  prefsDefaultCompressionLevel_ = named(new QComboBox, "prefsDefaultCompressionLevel");
  for (QAction* choice : defaultLevelChoices)
    prefsDefaultCompressionLevel_->addItem(choice->text());
  connect(prefsDefaultCompressionLevel_, &QComboBox::activated, this,
          [defaultLevelChoices](int index) { defaultLevelChoices.at(index)->trigger(); });
  chkExcludeDS_Store_ =
      checkbox("chkExcludeDS_Store", tr("Leave out the “.DS_Store” files of Mac folders"),
               &PreferencesClass::chkBoxExclude_DS_Store);
  auto* creationLayout = form(creation);
  creationLayout->addRow(tr("Default compression level:"), prefsDefaultCompressionLevel_);
  creationLayout->addRow(chkExcludeDS_Store_);

  return page({extraction, creation});
}

QWidget* PreferencesClass::buildBackup() {
  auto* folder = new QGroupBox(tr("Backup folder"));
  backupFolderEditBox_ = named(new QLineEdit, "backupFolderEditBox");
  backupFolderEditBox_->setReadOnly(true);
  backupFolderEditBox_->setPlaceholderText(tr("No folder chosen"));
  auto* choose =
      named(new QPushButton(ResourceIcons::themed("folder-open", "folder"), tr("Choose…")),
            "btnChooseBackupFolder");
  connect(choose, &QPushButton::clicked, this, &PreferencesClass::btnChooseBackupFolder);

  auto* row = new QHBoxLayout;
  row->addWidget(backupFolderEditBox_, 1);
  row->addWidget(choose);
  auto* layout = new QVBoxLayout(folder);
  layout->addWidget(explanation(tr("Backups of your home folder are saved in this folder.")));
  layout->addLayout(row);
  return page({folder});
}

QWidget* PreferencesClass::buildInternet() {
  auto* updates = new QGroupBox(tr("Updates"));
  chkAutoUpdateChkBox_ =
      checkbox("chkAutoUpdateChkBox", tr("Check for a new version when Quillet starts"),
               &PreferencesClass::chkAutoCheckForUpdates);
  auto* layout = new QVBoxLayout(updates);
  layout->addWidget(chkAutoUpdateChkBox_);

  auto* upload = new QGroupBox(tr("Uploading new archives"));
  btnPreferencesFTPSettings_ = named(
      new QPushButton(QIcon::fromTheme(QStringLiteral("network-server")), tr("FTP Settings…")),
      "btnPreferencesFTPSettings");
  btnOpenEmailSettings_ = named(
      new QPushButton(QIcon::fromTheme(QStringLiteral("mail-message-new")), tr("E-mail Settings…")),
      "btnOpenEmailSettings");
  auto* uploadLayout = new QVBoxLayout(upload);
  uploadLayout->addWidget(
      explanation(tr("A new archive can be uploaded to an FTP server, and an e-mail notice with "
                     "its link sent once the upload is done.")));
  auto* buttons = new QHBoxLayout;
  buttons->addWidget(btnPreferencesFTPSettings_);
  buttons->addWidget(btnOpenEmailSettings_);
  buttons->addStretch(1);
  uploadLayout->addLayout(buttons);
  return page({updates, upload});
}

QWidget* PreferencesClass::buildMisc() {
  auto* fileTypes = new QGroupBox(tr("File types"));
  btnAssociateNow_ = named(new QPushButton(kAssociateNow), "btnAssociateNow");
  connect(btnAssociateNow_, &QPushButton::clicked, this,
          &PreferencesClass::btnAssociateSupportedFileTypes);
  associationProblem_ = named(explanation(QString()), "associationProblem");
  associationProblem_->hide();

  auto* row = new QHBoxLayout;
  row->addWidget(btnAssociateNow_);
  row->addStretch(1);
  auto* layout = new QVBoxLayout(fileTypes);
  layout->addWidget(
      explanation(tr("Make Quillet the application that opens ZIP, RAR, 7z, TAR, GZIP, BZIP2, LHA "
                     "and ARJ archives when you open them in your file manager.")));
  layout->addLayout(row);
  layout->addWidget(associationProblem_);
  chkListCompressedTarArchives_ =
      checkbox("chkListCompressedTarArchives",
               tr("List compressed tar archives (.tar.gz, .tar.bz2, .tar.xz, .tar.zst)"),
               &PreferencesClass::chkBoxListCompressedTarArchives);
  layout->addWidget(chkListCompressedTarArchives_);
  return page({fileTypes});
}

QWidget* PreferencesClass::buildContextMenu() {
  auto* fileManager = new QGroupBox(tr("File manager"));
  chkEnableCustomContextMenu_ =
      checkbox("chkEnableCustomContextMenu",
               tr("Show archives opened with Quillet in the quick-extract window"),
               &PreferencesClass::chkBoxEnableCustomContextMenu);
  auto* layout = new QVBoxLayout(fileManager);
  layout->addWidget(
      explanation(tr("Quillet adds “Compress with Quillet” and “Extract with Quillet” to the "
                     "context menu of your file manager. An archive opened that way is "
                     "extracted beside itself at once, unless this is on.")));
  layout->addWidget(chkEnableCustomContextMenu_);
  return page({fileManager});
}

QWidget* PreferencesClass::buildDrop() {
  auto* dropped = new QGroupBox(tr("Files opened with Quillet"));
  onDropCompressionMethodDropDown_ = named(new QComboBox, "onDropCompressionMethodDropDown");
  for (const QString* method : kDropMethods)
    onDropCompressionMethodDropDown_->addItem(*method);
  connect(onDropCompressionMethodDropDown_, &QComboBox::activated, this,
          &PreferencesClass::storeDropMethod);
  onDropComplressionLevelDropDown_ = named(new QComboBox, "onDropComplressionLevelDropDown");
  for (const char* level : kDropLevelLabels)
    onDropComplressionLevelDropDown_->addItem(tr(level));
  onDropComplressionLevelDropDown_->setCurrentIndex(kDropLevelAsBuilt);
  connect(onDropComplressionLevelDropDown_, &QComboBox::activated, this,
          &PreferencesClass::storeDropLevel);
  chkUseTheFirstFileFromTheArrayForArchiveName_ =
      checkbox("chkUseTheFirstFileFromTheArrayForArchiveName",
               tr("Name the archive after the first file instead of asking for a name"),
               &PreferencesClass::chkPrefUseFirstNameOfTheArrayAsArchiveName);

  auto* layout = form(dropped);
  layout->addRow(
      explanation(tr("Files that are not archives are packed into one new archive "
                     "beside them, and Quillet then quits.")));
  layout->addRow(tr("Format:"), onDropCompressionMethodDropDown_);
  layout->addRow(tr("Compression level:"), onDropComplressionLevelDropDown_);
  layout->addRow(chkUseTheFirstFileFromTheArrayForArchiveName_);
  return page({dropped});
}

void PreferencesClass::showStoredPreferences() {
  switchOnWhenYes(chkCreateSurroundingFolderBeforeExtraction_,
                  kCreateSurroundingFolderBeforeExtraction);
  const QString backupFolder = PreferencesStore::text(kDefaultBackupDirectory);
  if (!backupFolder.isEmpty())
    backupFolderEditBox_->setText(backupFolder);
  loadOnDropPreferences();
  switchOnWhenYes(chkRemoveMACOSXFolder_, kAutoremoveMACOSXfolder);
  switchOnWhenYes(chkListCompressedTarArchives_, kListCompressedTarArchives);
  switchOnWhenYes(chkExcludeDS_Store_, kExcludeDS_Store);
  switchOnWhenYes(chkEnableCustomContextMenu_, kEnableCustomContextMenu);
  switchOnWhenYes(chkUseTheFirstFileFromTheArrayForArchiveName_,
                  kPrefUseFisrstNameOfTheArrayAsArchiveName);
  prefsDefaultCompressionLevel_->setCurrentIndex(
      DefaultLevelDisplay::of(PreferencesStore::text(kDefaultCompressionLevel)).popUpIndex);
  // Only "NO" turns the update check off; an absent key means on.
  chkAutoUpdateChkBox_->setChecked(PreferencesStore::text(kAutoCheckForNewVersion) != kNo);
}

void PreferencesClass::loadOnDropPreferences() {
  const QString method = PreferencesStore::text(kOnDropCompressionMethod);
  const auto stored = std::find_if(kDropMethods.begin(), kDropMethods.end(),
                                   [&method](const QString* known) { return *known == method; });
  if (stored != kDropMethods.end())
    onDropCompressionMethodDropDown_->setCurrentIndex(int(stored - kDropMethods.begin()));
  else
    PreferencesStore::setText(kOnDropCompressionMethod, OnDropSwitches::kZip);

  const QString level = PreferencesStore::text(kOnDropCompressionLevel);
  for (int index = 0; index < int(kDropLevelLabels.size()); ++index) {
    if (level == QString::number(index)) {
      onDropComplressionLevelDropDown_->setCurrentIndex(index);
      return;
    }
  }
  PreferencesStore::setText(kOnDropCompressionLevel, QString::number(kDropLevelAsBuilt));
}

void PreferencesClass::selectTab(int index) {
  tabContainer_->setCurrentIndex(index);
}

void PreferencesClass::toolBarBtnGeneral() {
  selectTab(General);
}

void PreferencesClass::toolBarBtnBackup() {
  selectTab(Backup);
}

void PreferencesClass::toolBarBtnInternet() {
  selectTab(Internet);
}

void PreferencesClass::toolBarBtnMisc() {
  selectTab(Misc);
}

void PreferencesClass::toolBarBtnContextMenu() {
  selectTab(ContextMenu);
}

void PreferencesClass::toolBarBtnDrop() {
  selectTab(Drop);
}

void PreferencesClass::chkCreateSurroundingFolderBeforeExtractionAction() {
  storeCheckbox(chkCreateSurroundingFolderBeforeExtraction_,
                kCreateSurroundingFolderBeforeExtraction);
}

void PreferencesClass::chkBoxRemoveMACOSXFolder() {
  storeCheckbox(chkRemoveMACOSXFolder_, kAutoremoveMACOSXfolder);
}

void PreferencesClass::chkBoxExclude_DS_Store() {
  storeCheckbox(chkExcludeDS_Store_, kExcludeDS_Store);
}

void PreferencesClass::chkBoxEnableCustomContextMenu() {
  storeCheckbox(chkEnableCustomContextMenu_, kEnableCustomContextMenu);
}

void PreferencesClass::chkPrefUseFirstNameOfTheArrayAsArchiveName() {
  storeCheckbox(chkUseTheFirstFileFromTheArrayForArchiveName_,
                kPrefUseFisrstNameOfTheArrayAsArchiveName);
}

void PreferencesClass::chkAutoCheckForUpdates() {
  storeCheckbox(chkAutoUpdateChkBox_, kAutoCheckForNewVersion);
}

void PreferencesClass::chkBoxListCompressedTarArchives() {
  storeCheckbox(chkListCompressedTarArchives_, kListCompressedTarArchives);
}

void PreferencesClass::storeDropMethod(int index) {
  (this->*kDropMethodActions.at(index))();
}

void PreferencesClass::storeDropLevel(int index) {
  (this->*kDropLevelActions.at(index))();
}

void PreferencesClass::dropATZip() {
  PreferencesStore::setText(kOnDropCompressionMethod, OnDropSwitches::kZip);
}

void PreferencesClass::dropAT7z() {
  PreferencesStore::setText(kOnDropCompressionMethod, OnDropSwitches::kSevenZip);
}

void PreferencesClass::dropATRAR() {
  PreferencesStore::setText(kOnDropCompressionMethod, OnDropSwitches::kRar);
}

void PreferencesClass::dropATARJ() {
  PreferencesStore::setText(kOnDropCompressionMethod, OnDropSwitches::kArj);
}

void PreferencesClass::dropATLHA() {
  PreferencesStore::setText(kOnDropCompressionMethod, OnDropSwitches::kLha);
}

void PreferencesClass::dropCL0() {
  PreferencesStore::setText(kOnDropCompressionLevel, QStringLiteral("0"));
}

void PreferencesClass::dropCL1() {
  PreferencesStore::setText(kOnDropCompressionLevel, QStringLiteral("1"));
}

void PreferencesClass::dropCL2() {
  PreferencesStore::setText(kOnDropCompressionLevel, QStringLiteral("2"));
}

void PreferencesClass::dropCL3() {
  PreferencesStore::setText(kOnDropCompressionLevel, QStringLiteral("3"));
}

void PreferencesClass::dropCL4() {
  PreferencesStore::setText(kOnDropCompressionLevel, QStringLiteral("4"));
}

void PreferencesClass::btnChooseBackupFolder() {
  // The panel's title is the extraction panel's, although it picks the
  // backup folder.
  Dialogs::OpenPanel panel =
      Dialogs::OpenPanel::folder(QStringLiteral("Select directory to extract to"));
  panel.startFolder = backupFolderEditBox_->text();
  const QStringList chosen = dialogs_.chooseToOpen(windowPreferences_, panel);
  if (chosen.isEmpty())
    return;
  backupFolderEditBox_->setText(chosen.first());
  PreferencesStore::setText(kDefaultBackupDirectory, chosen.first());
}

void PreferencesClass::btnAssociateSupportedFileTypes() {
  AssociateNowButton::press(runner_, *btnAssociateNow_, *associationProblem_);
}

void PreferencesClass::btnClosePreferencesWindow() {
  if (!windowPreferences_->isVisible())
    return;
  windowPreferences_->hide();
  btnAssociateNow_->setText(kAssociateNow);
  btnAssociateNow_->setEnabled(true);
  associationProblem_->hide();
}
