#include "tools/DMGUtility.h"

#include "create/FolderSize.h"
#include "engine/OperationStatus.h"
#include "engine/ToolLocations.h"
#include "platform/Dialogs.h"
#include "platform/ObjectNames.h"
#include "platform/ResourceIcons.h"
#include "tools/DiskImageArguments.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QIntValidator>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kProgressIntervalMs = 111;
constexpr int kHeaderIconSize = 48;

QPushButton* browseButton(const char* objectName) {
  return named(new QPushButton(
                   ResourceIcons::themed(QStringLiteral("folder-open"), QStringLiteral("folder")),
                   QObject::tr("Browse…")),
               objectName);
}

QHBoxLayout* row(std::initializer_list<QWidget*> widgets, int stretchOf = 0) {
  auto* layout = new QHBoxLayout;
  int index = 0;
  for (QWidget* widget : widgets)
    layout->addWidget(widget, index++ == stretchOf ? 1 : 0);
  return layout;
}

QLabel* buddyLabel(const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text);
  label->setBuddy(buddy);
  return label;
}

// The progress bar counts kilobytes, so that images past 2 GiB fit an int.
int kilobytes(float bytes) {
  return static_cast<int>(std::min(bytes / 1024.0f, 2.0e9f));
}

}  // namespace

DMGUtility::DMGUtility(Dialogs& dialogs, QWidget* page, QWidget* statusWindow, QObject* parent)
    : QObject(parent), dialogs_(dialogs), page_(page), statusWindow_(statusWindow) {
  buildPage(page);
  connect(&progressTimer_, &QTimer::timeout, this, &DMGUtility::loadingProgress);
  connect(chkEncryptImageOutlet, &QCheckBox::toggled, this, &DMGUtility::chkEncryptImage);
  connect(createDMGBtnOutlet, &QPushButton::clicked, this, &DMGUtility::createDMGBtn);
  chkEncryptImage();
}

void DMGUtility::buildPage(QWidget* page) {
  auto* layout = new QVBoxLayout(page);
  auto* header = new QHBoxLayout;
  auto* icon = new QLabel;
  icon->setPixmap(ResourceIcons::themed(QStringLiteral("media-optical"), QStringLiteral("archive"))
                      .pixmap(kHeaderIconSize));
  header->addWidget(icon);
  auto* titles = new QVBoxLayout;
  auto* title = new QLabel(tr("Disk image"));
  QFont bold = title->font();
  bold.setBold(true);
  bold.setPointSizeF(bold.pointSizeF() * 1.3);
  title->setFont(bold);
  titles->addWidget(title);
  titles->addWidget(new QLabel(tr("Make an image file of a folder, to keep, send or mount.")));
  header->addLayout(titles, 1);
  layout->addLayout(header);

  auto* image = new QGroupBox(tr("Image"));
  auto* form = new QFormLayout(image);
  sourcePath = named(new QLineEdit, "sourcePath");
  sourcePath->setPlaceholderText(tr("The folder to put into the image"));
  auto* browseSource = browseButton("browseSourceBtn");
  connect(browseSource, &QPushButton::clicked, this, &DMGUtility::browseSourceBtn);
  form->addRow(buddyLabel(tr("&Source folder:"), sourcePath), row({sourcePath, browseSource}));
  destinationPath = named(new QLineEdit, "destinationPath");
  destinationPath->setPlaceholderText(tr("Where the image is saved"));
  auto* browseDestination = browseButton("browseDestBtn");
  connect(browseDestination, &QPushButton::clicked, this, &DMGUtility::browseDestBtn);
  form->addRow(buddyLabel(tr("Save &in:"), destinationPath),
               row({destinationPath, browseDestination}));
  imageName = named(new QLineEdit, "imageName");
  imageName->setPlaceholderText(tr("Name of the image"));
  form->addRow(buddyLabel(tr("Image &name:"), imageName),
               row({imageName, new QLabel(QStringLiteral(".dmg"))}));
  targetSizeTextField = named(new QLineEdit(QStringLiteral("0")), "targetSizeTextField");
  targetSizeTextField->setValidator(new QIntValidator(0, 999999999, targetSizeTextField));
  targetSizeTextField->setMaximumWidth(120);
  targetSizeTypePopUp = named(new QComboBox, "targetSizeTypePopUp");
  targetSizeTypePopUp->addItems({tr("KB"), tr("MB"), tr("GB")});
  targetSizeTypePopUp->setCurrentIndex(1);
  auto* sizeHint = new QLabel(tr("0: just large enough for the folder"));
  sizeHint->setForegroundRole(QPalette::PlaceholderText);
  auto* sizeRow = row({targetSizeTextField, targetSizeTypePopUp, sizeHint}, 2);
  form->addRow(buddyLabel(tr("Si&ze:"), targetSizeTextField), sizeRow);
  layout->addWidget(image);

  auto* encryption = new QGroupBox(tr("Encryption"));
  auto* secret = new QFormLayout(encryption);
  secret->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
  chkEncryptImageOutlet =
      named(new QCheckBox(tr("&Encrypt the image with a password")), "chkEncryptImageOutlet");
  secret->addRow(chkEncryptImageOutlet);
  encryptionAlgoLabel = named(new QLabel(tr("&Algorithm:")), "encryptionAlgoLabel");
  encryptionAlgoPopUp = named(new QComboBox, "encryptionAlgoPopUp");
  encryptionAlgoPopUp->addItems({QStringLiteral("AES-128"), QStringLiteral("AES-256")});
  encryptionAlgoLabel->setBuddy(encryptionAlgoPopUp);
  secret->addRow(encryptionAlgoLabel, encryptionAlgoPopUp);
  encryptionPassLabel = named(new QLabel(tr("&Password:")), "encryptionPassLabel");
  encryptionPassTextField = named(new QLineEdit, "encryptionPassTextField");
  encryptionPassTextField->setEchoMode(QLineEdit::Password);
  encryptionPassTextField->setMinimumWidth(280);
  encryptionPassLabel->setBuddy(encryptionPassTextField);
  secret->addRow(encryptionPassLabel, encryptionPassTextField);
  encryptionPassRepeatLabel = named(new QLabel(tr("&Repeat:")), "encryptionPassRepeatLabel");
  encryptionPassRepeatTextField = named(new QLineEdit, "encryptionPassRepeatTextField");
  encryptionPassRepeatTextField->setEchoMode(QLineEdit::Password);
  encryptionPassRepeatTextField->setMinimumWidth(280);
  encryptionPassRepeatLabel->setBuddy(encryptionPassRepeatTextField);
  secret->addRow(encryptionPassRepeatLabel, encryptionPassRepeatTextField);
  layout->addWidget(encryption);
  layout->addStretch(1);

  auto* progress = new QHBoxLayout;
  loadingSpin = named(new QProgressBar, "loadingSpin");
  loadingSpin->setRange(0, 1);
  loadingSpin->setTextVisible(false);
  loadingSpin->setFixedWidth(60);
  loadingSpin->setMaximumHeight(10);
  QSizePolicy keepsPlace = loadingSpin->sizePolicy();
  keepsPlace.setRetainSizeWhenHidden(true);
  loadingSpin->setSizePolicy(keepsPlace);
  loadingSpin->hide();
  loadingLabel = named(new QLabel, "loadingLabel");
  loadingLabel->hide();
  loadingProgressBar = named(new QProgressBar, "loadingProgressBar");
  loadingProgressBar->hide();
  createDMGBtnOutlet = named(new QPushButton(ResourceIcons::themed(QStringLiteral("media-optical"),
                                                                   QStringLiteral("archive")),
                                             tr("&Create Image")),
                             "createDMGBtnOutlet");
  progress->addWidget(loadingSpin);
  progress->addWidget(loadingLabel);
  progress->addWidget(loadingProgressBar, 1);
  progress->addStretch(0);
  cancelDMGBtn =
      named(new QPushButton(QIcon::fromTheme(QStringLiteral("process-stop")), tr("Cancel")),
            "cancelDMGBtn");
  cancelDMGBtn->hide();
  connect(cancelDMGBtn, &QPushButton::clicked, this, &DMGUtility::btnCancelDMG);
  progress->addWidget(cancelDMGBtn);
  progress->addWidget(createDMGBtnOutlet);
  layout->addLayout(progress);
  // Enter in any field makes the image, as a form's default button would.
  for (QLineEdit* field : page->findChildren<QLineEdit*>())
    connect(field, &QLineEdit::returnPressed, createDMGBtnOutlet, &QPushButton::animateClick);
}

QString DMGUtility::chooseFolder(const QString& title) {
  Dialogs::OpenPanel panel = Dialogs::OpenPanel::folder(title);
  const QStringList chosen = dialogs_.chooseToOpen(page_, panel);
  return chosen.isEmpty() ? QString() : chosen.first();
}

void DMGUtility::browseSourceBtn() {
  const QString folder = chooseFolder(QStringLiteral("Select source directory"));
  if (!folder.isEmpty())
    sourcePath->setText(folder);
}

void DMGUtility::browseDestBtn() {
  const QString folder = chooseFolder(QStringLiteral("Select destination directory"));
  if (!folder.isEmpty())
    destinationPath->setText(folder);
}

void DMGUtility::chkEncryptImage() {
  const bool shown = chkEncryptImageOutlet->isChecked();
  for (QWidget* widget : std::initializer_list<QWidget*>{
           encryptionAlgoPopUp, encryptionAlgoLabel, encryptionPassLabel, encryptionPassRepeatLabel,
           encryptionPassTextField, encryptionPassRepeatTextField})
    widget->setVisible(shown);
}

float DMGUtility::getDirSize(const QString& path) {
  return FolderSize::bytes(sizes_, path);
}

void DMGUtility::loadingProgress() {
  const QString& image = image_;
  // du would complain about a missing image; nothing is written yet.
  const int written = QFileInfo::exists(image) ? kilobytes(getDirSize(image)) : 0;
  loadingProgressBar->setValue(std::min(written, loadingProgressBar->maximum()));
}

QString DMGUtility::imagePath() const {
  return QDir(destinationPath->text()).filePath(imageName->text() + QStringLiteral(".dmg"));
}

void DMGUtility::setSpinning(bool spinning) {
  loadingSpin->setRange(0, spinning ? 0 : 1);
  loadingSpin->setVisible(spinning);
}

void DMGUtility::createDMGBtn() {
  for (auto [field, message] : {std::pair{sourcePath, "Please choose source path."},
                                std::pair{destinationPath, "Please choose destination path."},
                                std::pair{imageName, "Please enter image name."}}) {
    if (field->text().isEmpty()) {
      dialogs_.alert(QStringLiteral("Error"), QString::fromLatin1(message), QStringLiteral("OK"));
      return;
    }
  }
  setSpinning(true);
  loadingLabel->setText(QStringLiteral("Work in progress, please wait..."));
  loadingLabel->show();
  image_ = imagePath();
  const QString image = image_;
  if (QFileInfo::exists(image)) {
    dialogs_.alert(QStringLiteral("Image exists"),
                   QStringLiteral("Image with this name already exists."), QStringLiteral("OK"));
    setSpinning(false);
    loadingLabel->hide();
    return;
  }
  loadingProgressBar->setRange(0, std::max(1, kilobytes(getDirSize(sourcePath->text()))));
  loadingProgressBar->setValue(0);
  loadingProgressBar->show();
  progressTimer_.start(kProgressIntervalMs);

  DiskImageOrder order;
  order.algorithm = encryptionAlgoPopUp->currentIndex();
  if (encryptionPassTextField->text() != encryptionPassRepeatTextField->text()) {
    dialogs_.alert(QStringLiteral("Wrong passwords doesn't match!"),
                   QStringLiteral("Please reenter your passwords"), QStringLiteral("OK"));
    return;
  }
  order.sizeText = targetSizeTextField->text();
  order.sizeUnit = targetSizeTypePopUp->currentIndex();
  order.encrypted = chkEncryptImageOutlet->isChecked();
  order.source = sourcePath->text();
  order.image = image;

  ToolRun run;
  run.program = ToolLocations::tool(QStringLiteral("hdiutil"));
  run.arguments = DiskImageArguments::arguments(order);
  if (order.encrypted)
    run.input = encryptionPassTextField->text().toUtf8();
  // Cancel stays clickable while the tool runs; Create does not.
  run.acceptsUserInput = true;
  cancelled_ = false;
  createDMGBtnOutlet->setEnabled(false);
  cancelDMGBtn->show();
  const ToolResult result = imageTool_.run(run);
  cancelDMGBtn->hide();
  createDMGBtnOutlet->setEnabled(true);

  progressTimer_.stop();
  loadingProgressBar->setValue(0);
  loadingProgressBar->hide();
  setSpinning(false);
  loadingLabel->hide();
  loadingLabel->setText(QStringLiteral("DMG image creation done"));
  if (cancelled_) {
    // An existing image was refused above, so whatever stands there now is
    // this run's half-made one, left behind when the tool had to be killed.
    QFile::remove(image);
    showStatus(tr("The disk image was stopped; no image was made."));
  } else if (!result.succeeded()) {
    showStatus(
        tr("The disk image was not made: %1")
            .arg(result.started ? result.lastErrorLine() : tr("hdiutil could not be started")));
  } else {
    showStatus(tr("Disk image made: %1").arg(OperationStatus::placeText(image)));
  }
  emit creationFinished();
}

void DMGUtility::btnCancelDMG() {
  cancelled_ = true;
  imageTool_.cancel();
}

void DMGUtility::showStatus(const QString& message) {
  if (auto* window = qobject_cast<QMainWindow*>(statusWindow_.data()))
    window->statusBar()->showMessage(message);
}
