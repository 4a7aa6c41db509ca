#include "create/CreateArchiveWindow.h"
#include "platform/FormButtons.h"
#include "platform/ObjectNames.h"
#include "platform/WindowPlacement.h"

#include "create/CreateHelp.h"
#include "create/JobSettings.h"
#include "platform/PreferencesStore.h"
#include "platform/ResourceIcons.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSlider>
#include <QStyle>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

struct FormatButton {
  const char* objectName;
  const char* label;
  const char* icon;
  CreateOptions::Format format;
};

const FormatButton kFormatButtons[] = {
    {"btnZipCompression", "ZIP", "zip.icns", CreateOptions::Format::Zip},
    {"btn7zCompression", "7Z", "7z.icns", CreateOptions::Format::SevenZip},
    {"btnTarCompression", "TAR", "tar.icns", CreateOptions::Format::Tar},
    {"btnGzipCompression", "TAR.GZ", "tgz.icns", CreateOptions::Format::Gzip},
    {"btnBzip2Compression", "TAR.BZ2", "bz2.icns", CreateOptions::Format::Bzip2},
    {"btnRarCompression", "RAR", "rar.icns", CreateOptions::Format::Rar},
    {"btnArjCompression", "ARJ", "arj.icns", CreateOptions::Format::Arj},
    {"btnLHACompression", "LHA", "lha.icns", CreateOptions::Format::Lha},
};

struct DefaultLevelButton {
  const char* objectName;
  const char* label;
  const char* stored;
};

// The button called Higher stores "Ultra".
const DefaultLevelButton kDefaultLevelButtons[] = {
    {"btnDefaultCompressionLevelLowestPref", "Lowest", "Lowest"},
    {"btnDefaultCompressionLevelLowPref", "Low", "Low"},
    {"btnDefaultCompressionLevelNormalPref", "Normal", "Normal"},
    {"btnDefaultCompressionLevelHighPref", "High", "High"},
    {"btnDefaultCompressionLevelHigherPref", "Higher", "Ultra"},
};

constexpr int kLevelPositions = 5;

struct UnitItem {
  const char* label;
  void (CreateArchiveWindow::*action)();
};

// The unit pop-up's items, in the order of CreateOptions::Unit.
const UnitItem kUnitItems[] = {
    {"KB", &CreateArchiveWindow::btnSplitToVolumesKB},
    {"MB", &CreateArchiveWindow::btnSplitToVolumesMB},
    {"GB", &CreateArchiveWindow::btnSplitToVolumesGB},
};

}  // namespace

CreateArchiveWindow::CreateArchiveWindow(JobSettings& settings, QWidget* parent)
    : QDialog(parent), settings_(settings) {
  setObjectName(QStringLiteral("createArchiveWindow"));
  setWindowTitle(tr("New Archive"));
  setWindowFlag(Qt::WindowStaysOnTopHint);

  selectionForCompression_ = named(new QLineEdit, "selectionForCompression");
  selectionForCompression_->setReadOnly(true);
  everyItemNewArchiveLabel_ = named(new QLabel(tr("Every item becomes an archive of its own.")),
                                    "everyItemNewArchiveLabel");
  everyItemNewArchiveLabel_->hide();
  chkUploadToFTPAfterCompression_ = named(new QCheckBox(tr("Upload to the FTP server when done")),
                                          "chkUploadToFTPAfterCompression");

  auto* options = new QVBoxLayout;
  auto* target = new QFormLayout;
  target->addRow(tr("Archive:"), selectionForCompression_);
  options->addLayout(target);
  options->addWidget(everyItemNewArchiveLabel_);
  options->addWidget(buildFormats());
  options->addWidget(buildLevel());
  options->addWidget(buildProtection());
  options->addLayout(buildAfterCompression());

  auto* buttons = new QDialogButtonBox;
  QPushButton* help = named(buttons->addButton(QDialogButtonBox::Help), "btnHelpCreateArchive");
  QPushButton* cancel =
      named(buttons->addButton(QDialogButtonBox::Cancel), "btnCreateArchiveCancel");
  QPushButton* compress =
      named(buttons->addButton(tr("Compress"), QDialogButtonBox::AcceptRole), "btnCompress");
  compress->setDefault(true);
  // Enter creates the archive even while Help has the focus.
  help->setAutoDefault(false);
  connect(help, &QPushButton::clicked, this, [this] { CreateHelp::showArchiveHelp(this); });
  connect(cancel, &QPushButton::clicked, this, &CreateArchiveWindow::btnCreateArchiveCancel);
  connect(compress, &QPushButton::clicked, this, &CreateArchiveWindow::compressRequested);
  options->addWidget(buttons);

  auto* drawers = new QVBoxLayout;
  drawers->addWidget(buildSfxDrawer());
  drawers->addWidget(buildNotesPanel(), 1);

  auto* layout = new QHBoxLayout(this);
  layout->addLayout(options, 1);
  setMinimumWidth(460);
  layout->addLayout(drawers);
  btnZipCompression();
  showControls();
  keepEnterForTheAnswers(this);
}

QWidget* CreateArchiveWindow::buildFormats() {
  auto* box = new QGroupBox(tr("Format"));
  auto* grid = new QGridLayout(box);
  formats_ = new QButtonGroup(this);
  int column = 0;
  for (const FormatButton& button : kFormatButtons) {
    auto* format = named(new QToolButton, button.objectName);
    format->setText(QString::fromLatin1(button.label));
    format->setIcon(ResourceIcons::named(QString::fromLatin1(button.icon)));
    format->setIconSize(QSize(32, 32));
    format->setCheckable(true);
    format->setAutoRaise(true);
    format->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    format->setMinimumWidth(72);
    formats_->addButton(format);
    grid->addWidget(format, column / 4, column % 4);
    ++column;
    connect(format, &QToolButton::clicked, this, [this, button] { chooseFormat(button.format); });
  }
  formats_->buttons().first()->setChecked(true);
  return box;
}

QWidget* CreateArchiveWindow::buildLevel() {
  auto* box = new QGroupBox(tr("Compression level"));
  auto* layout = new QGridLayout(box);
  compressionLevelSliderControl_ =
      named(new QSlider(Qt::Horizontal), "compressionLevelSliderControl");
  compressionLevelSliderControl_->setRange(0, kLevelPositions);
  compressionLevelSliderControl_->setTickPosition(QSlider::TicksBelow);
  compressionLevelSliderControl_->setPageStep(1);
  compressionLevelInfo_ = named(new QLabel, "compressionLevelInfo");
  connect(compressionLevelSliderControl_, &QSlider::valueChanged, this,
          &CreateArchiveWindow::compressionLevelSlider);

  auto* makeDefault = new QToolButton;
  makeDefault->setText(tr("Default for new archives"));
  makeDefault->setPopupMode(QToolButton::InstantPopup);
  auto* menu = new QMenu(makeDefault);
  for (const DefaultLevelButton& button : kDefaultLevelButtons) {
    QAction* action = menu->addAction(tr(button.label));
    action->setObjectName(QString::fromLatin1(button.objectName));
    const QString stored = QString::fromLatin1(button.stored);
    connect(action, &QAction::triggered, this, [stored] {
      PreferencesStore::setText(QStringLiteral("DefaultCompressionLevel"), stored);
    });
  }
  makeDefault->setMenu(menu);
  defaultLevelActions_ = menu->actions();

  layout->addWidget(compressionLevelSliderControl_, 0, 0);
  layout->addWidget(makeDefault, 0, 1);
  layout->addWidget(compressionLevelInfo_, 1, 0, 1, 2);
  return box;
}

QWidget* CreateArchiveWindow::buildProtection() {
  auto* box = new QGroupBox(tr("Options"));
  auto* grid = new QGridLayout(box);
  chkPasswordProtected_ =
      named(new QCheckBox(tr("Protect with a password")), "chkPasswordProtected");
  textFieldPassword_ = named(new QLineEdit, "textFieldPassword");
  textFieldPasswordConfirm_ = named(new QLineEdit, "textFieldPasswordConfirm");
  for (QLineEdit* field : {textFieldPassword_, textFieldPasswordConfirm_})
    field->setEchoMode(QLineEdit::Password);
  textFieldPassword_->setPlaceholderText(tr("Password"));
  textFieldPasswordConfirm_->setPlaceholderText(tr("Repeat the password"));

  chkSplitToVolumes_ = named(new QCheckBox(tr("Split into volumes of")), "chkSplitToVolumes");
  textfieldSplitToVolumesSize_ = named(new QLineEdit, "textfieldSplitToVolumesSize");
  textfieldSplitToVolumesSize_->setValidator(new QIntValidator(1, 999999999, this));
  btnSplitToVolumesSizeType_ = named(new QComboBox, "btnSplitToVolumesSizeType");
  for (const UnitItem& item : kUnitItems)
    btnSplitToVolumesSizeType_->addItem(tr(item.label));
  btnSplitToVolumesSizeType_->setCurrentIndex(CreateOptions::Megabytes);

  sfxChkBox_ = named(new QCheckBox(tr("Self-extracting archive")), "sfxChkBox");
  auto* whatIsSfx = named(new QToolButton, "btnWhatIsSFX");
  whatIsSfx->setText(tr("What is this?"));
  whatIsSfx->setIcon(QIcon::fromTheme(QStringLiteral("help-contextual")));
  whatIsSfx->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  whatIsSfx->setAutoRaise(true);

  grid->addWidget(chkPasswordProtected_, 0, 0, 1, 3);
  auto* passwords = new QHBoxLayout;
  passwords->addWidget(textFieldPassword_);
  passwords->addWidget(textFieldPasswordConfirm_);
  grid->addLayout(passwords, 1, 0, 1, 3);
  grid->addWidget(chkSplitToVolumes_, 2, 0);
  grid->addWidget(textfieldSplitToVolumesSize_, 2, 1);
  grid->addWidget(btnSplitToVolumesSizeType_, 2, 2);
  grid->addWidget(sfxChkBox_, 3, 0);
  grid->addWidget(whatIsSfx, 3, 1, 1, 2, Qt::AlignLeft);
  grid->setColumnStretch(1, 1);
  grid->setColumnStretch(2, 1);

  connect(chkPasswordProtected_, &QCheckBox::clicked, this,
          &CreateArchiveWindow::chkboxPasswordProtected);
  connect(chkSplitToVolumes_, &QCheckBox::clicked, this,
          &CreateArchiveWindow::chkBoxSplitToVolumes);
  connect(sfxChkBox_, &QCheckBox::clicked, this, &CreateArchiveWindow::chkCreateSFXArchive);
  connect(btnSplitToVolumesSizeType_, &QComboBox::activated, this,
          [this](int item) { (this->*kUnitItems[item].action)(); });
  connect(whatIsSfx, &QToolButton::clicked, this, [this] { CreateHelp::showSfxHelp(this); });
  return box;
}

QLayout* CreateArchiveWindow::buildAfterCompression() {
  chkSendMailAfterUploadIsCompletedOutlet_ =
      named(new QCheckBox(tr("E-mail a notice after the upload")),
            "chkSendMailAfterUploadIsCompletedOutlet");
  btnFTPSettings_ = named(
      new QPushButton(QIcon::fromTheme(QStringLiteral("network-server")), tr("FTP Settings…")),
      "btnFTPSettings");
  btnOpenEmailSettings_ = named(
      new QPushButton(QIcon::fromTheme(QStringLiteral("mail-message-new")), tr("E-mail Settings…")),
      "btnOpenEmailSettings");
  connect(chkUploadToFTPAfterCompression_, &QCheckBox::clicked, this,
          &CreateArchiveWindow::chkUploadFtpAfterCompressionAction);
  auto* grid = new QGridLayout;
  grid->addWidget(chkUploadToFTPAfterCompression_, 0, 0, 1, 2);
  grid->addWidget(btnFTPSettings_, 0, 2);
  grid->addItem(new QSpacerItem(style()->pixelMetric(QStyle::PM_IndicatorWidth), 0), 1, 0);
  grid->addWidget(chkSendMailAfterUploadIsCompletedOutlet_, 1, 1);
  grid->addWidget(btnOpenEmailSettings_, 1, 2);
  grid->setColumnStretch(1, 1);
  return grid;
}

QWidget* CreateArchiveWindow::buildSfxDrawer() {
  sfxObjectDrawer_ = named(new QGroupBox(tr("Self-extracting archive")), "sfxObjectDrawer");
  sfxObjectDrawer_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Maximum);
  auto* layout = new QHBoxLayout(sfxObjectDrawer_);
  auto* icon = new QLabel;
  const int side = style()->pixelMetric(QStyle::PM_LargeIconSize);
  icon->setPixmap(ResourceIcons::themed(QStringLiteral("application-x-executable"),
                                        QStringLiteral("application.png"))
                      .pixmap(side, side));
  icon->setAlignment(Qt::AlignTop);
  auto* explanation = new QLabel(
      tr("The archive is wrapped in a small program that unpacks it, so whoever "
         "receives it needs no archive manager. A note, if you write one, is shown to them "
         "first."));
  explanation->setWordWrap(true);
  explanation->setMinimumWidth(220);
  layout->addWidget(icon);
  layout->addWidget(explanation, 1);
  return sfxObjectDrawer_;
}

QWidget* CreateArchiveWindow::buildNotesPanel() {
  noteDrawer_ = named(new QGroupBox(tr("Note")), "noteDrawer");
  auto* layout = new QVBoxLayout(noteDrawer_);
  auto* hint = new QLabel(tr("Shown to whoever opens the archive."));
  hint->setWordWrap(true);
  sfxNotesField_ = named(new QPlainTextEdit, "sfxNotesField");
  sfxNotesField_->setMinimumWidth(220);
  layout->addWidget(hint);
  layout->addWidget(sfxNotesField_, 1);
  return noteDrawer_;
}

const CreateOptions& CreateArchiveWindow::options() {
  takeControls();
  return options_;
}

QString CreateArchiveWindow::notes() const {
  return sfxNotesField_->toPlainText();
}

void CreateArchiveWindow::centreAndShow() {
  WindowPlacement::centreAndShow(this);
}

void CreateArchiveWindow::disableSplitAndSfx() {
  takeControls();
  options_.splitEnabled = false;
  options_.sfxEnabled = false;
  showControls();
}

void CreateArchiveWindow::chooseFormat(CreateOptions::Format format) {
  takeControls();
  settings_.compressionMethod = options_.chooseFormat(format);
  showControls();
}

void CreateArchiveWindow::compressionLevelSlider() {
  const int position = static_cast<int>(compressionLevelSliderControl_->value());
  if (const CompressionLevel* level = JobSettings::levelAt(position)) {
    settings_.useLevel(*level);
    compressionLevelInfo_->setText(level->info);
  }
}

void CreateArchiveWindow::chkboxPasswordProtected() {
  takeControls();
  options_.passwordToggled(chkPasswordProtected_->isChecked());
  settings_.isPasswordProtected = options_.passwordChecked;
  showControls();
}

void CreateArchiveWindow::chkBoxSplitToVolumes() {
  takeControls();
  options_.splitToggled(chkSplitToVolumes_->isChecked(), settings_.compressionMethod);
  showControls();
}

void CreateArchiveWindow::chkCreateSFXArchive() {
  takeControls();
  options_.sfxToggled(sfxChkBox_->isChecked());
  showControls();
}

void CreateArchiveWindow::chkBoxEveryItemNewArchive(bool on) {
  takeControls();
  options_.everyItemToggled(on);
  showControls();
}

void CreateArchiveWindow::btnSplitToVolumesKB() {
  settings_.splitVolumesSizeType = QStringLiteral("k");
}

void CreateArchiveWindow::btnSplitToVolumesMB() {
  settings_.splitVolumesSizeType = QStringLiteral("m");
}

void CreateArchiveWindow::btnSplitToVolumesGB() {
  settings_.splitVolumesSizeType = QStringLiteral("g");
}

void CreateArchiveWindow::btnCreateArchiveCancel() {
  if (isVisible())
    hide();
}

void CreateArchiveWindow::chkUploadFtpAfterCompressionAction() {
  const bool upload = chkUploadToFTPAfterCompression_->isChecked();
  chkSendMailAfterUploadIsCompletedOutlet_->setVisible(upload);
  btnOpenEmailSettings_->setVisible(upload);
  layout()->activate();
  adjustSize();
}

void CreateArchiveWindow::takeControls() {
  options_.sfxChecked = sfxChkBox_->isChecked();
  options_.splitChecked = chkSplitToVolumes_->isChecked();
  options_.splitSizeText = textfieldSplitToVolumesSize_->text();
  options_.unitIndex = btnSplitToVolumesSizeType_->currentIndex();
  options_.passwordChecked = chkPasswordProtected_->isChecked();
  options_.passwordText = textFieldPassword_->text();
  options_.confirmText = textFieldPasswordConfirm_->text();
  options_.uploadChecked = chkUploadToFTPAfterCompression_->isChecked();
}

void CreateArchiveWindow::showControls() {
  sfxChkBox_->setEnabled(options_.sfxEnabled);
  sfxChkBox_->setChecked(options_.sfxChecked);
  chkSplitToVolumes_->setEnabled(options_.splitEnabled);
  chkSplitToVolumes_->setChecked(options_.splitChecked);
  textfieldSplitToVolumesSize_->setEnabled(options_.splitSizeEnabled);
  textfieldSplitToVolumesSize_->setText(options_.splitSizeText);
  btnSplitToVolumesSizeType_->setEnabled(options_.unitEnabled);
  btnSplitToVolumesSizeType_->setCurrentIndex(options_.unitIndex);
  chkPasswordProtected_->setEnabled(options_.passwordEnabled);
  chkPasswordProtected_->setChecked(options_.passwordChecked);
  textFieldPassword_->setEnabled(options_.passwordFieldsEnabled);
  textFieldPasswordConfirm_->setEnabled(options_.passwordFieldsEnabled);
  textFieldPassword_->setText(options_.passwordText);
  textFieldPasswordConfirm_->setText(options_.confirmText);
  sfxObjectDrawer_->setVisible(options_.sfxDrawerOpen);
  noteDrawer_->setVisible(options_.notesPanelOpen);
  everyItemNewArchiveLabel_->setVisible(options_.everyItemLabelVisible);
  chkUploadToFTPAfterCompression_->setEnabled(options_.uploadEnabled);
  chkUploadToFTPAfterCompression_->setChecked(options_.uploadChecked);
  // Lays the window out again, so that it follows its drawers at once,
  // also when they close.
  chkUploadFtpAfterCompressionAction();
}
