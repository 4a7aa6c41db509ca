#include "tools/BackupUi.h"

#include "platform/ObjectNames.h"
#include "platform/ResourceIcons.h"

#include <QCheckBox>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kHeaderIconSize = 48;
constexpr int kStatusIconSize = 32;
constexpr int kSpinnerWidth = 70;

QLabel* sizeLabel(const char* objectName) {
  auto* label = named(new QLabel, objectName);
  label->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setMinimumWidth(90);
  label->setText(QStringLiteral("—"));
  return label;
}

QLabel* iconLabel(const QIcon& icon, int size) {
  auto* label = new QLabel;
  label->setPixmap(icon.pixmap(size));
  label->setFixedSize(size, size);
  return label;
}

QLabel* boldLabel(const QString& text, qreal scale) {
  auto* label = new QLabel(text);
  QFont font = label->font();
  font.setBold(true);
  font.setPointSizeF(font.pointSizeF() * scale);
  label->setFont(font);
  return label;
}

QLabel* dimmedLabel(const char* objectName) {
  auto* label = named(new QLabel, objectName);
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}

// A small busy bar standing in for a spinner; it shows only while busy.
QProgressBar* spinner(const char* objectName, int width) {
  auto* bar = named(new QProgressBar, objectName);
  bar->setRange(0, 1);
  bar->setValue(0);
  bar->setTextVisible(false);
  bar->setFixedWidth(width);
  bar->setMaximumHeight(10);
  QSizePolicy keepsPlace = bar->sizePolicy();
  keepsPlace.setRetainSizeWhenHidden(true);
  bar->setSizePolicy(keepsPlace);
  bar->hide();
  return bar;
}

QWidget* buildHeader(BackupUi& ui) {
  auto* header = new QWidget;
  auto* layout = new QHBoxLayout(header);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(
      iconLabel(ResourceIcons::themed(QStringLiteral("document-save"), QStringLiteral("archive")),
                kHeaderIconSize));
  auto* text = new QVBoxLayout;
  text->addWidget(boldLabel(QObject::tr("Home-folder backup"), 1.3));
  auto* who = new QHBoxLayout;
  who->setSpacing(4);
  who->addWidget(new QLabel(QObject::tr("Preferences, documents and mail of")));
  ui.currentUser1 = named(new QLabel, "currentUser1");
  QFont bold = ui.currentUser1->font();
  bold.setBold(true);
  ui.currentUser1->setFont(bold);
  who->addWidget(ui.currentUser1);
  who->addWidget(new QLabel(QObject::tr("in one archive that restores itself.")));
  who->addStretch(1);
  text->addLayout(who);
  layout->addLayout(text, 1);
  return header;
}

QGroupBox* buildParts(BackupUi& ui) {
  auto* group = new QGroupBox(QObject::tr("What to back up"));
  auto* grid = new QGridLayout(group);
  grid->setColumnStretch(1, 1);
  const auto row = [grid](int line, QCheckBox* check, const QString& where, QLabel* size) {
    check->setChecked(true);
    grid->addWidget(check, line, 0);
    auto* folder = new QLabel(where);
    folder->setForegroundRole(QPalette::PlaceholderText);
    grid->addWidget(folder, line, 1);
    grid->addWidget(size, line, 2);
  };
  ui.chkAppsPrefs = named(new QCheckBox(QObject::tr("Preferences")), "chkAppsPrefs");
  ui.chkDox = named(new QCheckBox(QObject::tr("Documents")), "chkDox");
  ui.chkEmail = named(new QCheckBox(QObject::tr("Mail")), "chkEmail");
  ui.backUpAppPrefsSize = sizeLabel("backUpAppPrefsSize");
  ui.backUpDocsSize = sizeLabel("backUpDocsSize");
  ui.backUpEmail = sizeLabel("backUpEmail");
  row(0, ui.chkAppsPrefs, QObject::tr("the settings of your applications"), ui.backUpAppPrefsSize);
  row(1, ui.chkDox, QObject::tr("your documents folder"), ui.backUpDocsSize);
  row(2, ui.chkEmail, QObject::tr("your mail client's messages"), ui.backUpEmail);

  auto* line = new QFrame;
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  grid->addWidget(line, 3, 0, 1, 3);
  ui.btnGetSizes = named(
      new QPushButton(QIcon::fromTheme(QStringLiteral("view-refresh")), QObject::tr("&Measure")),
      "btnGetSizes");
  ui.btnGetSizes->setToolTip(QObject::tr("Measure the chosen folders"));
  grid->addWidget(ui.btnGetSizes, 4, 0);
  auto* totalCaption = new QLabel(QObject::tr("Total:"));
  totalCaption->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  grid->addWidget(totalCaption, 4, 1);
  ui.totalBackUpSize = sizeLabel("totalBackUpSize");
  QFont bold = ui.totalBackUpSize->font();
  bold.setBold(true);
  ui.totalBackUpSize->setFont(bold);
  grid->addWidget(ui.totalBackUpSize, 4, 2);
  auto* owner = new QHBoxLayout;
  owner->setSpacing(4);
  owner->addWidget(new QLabel(QObject::tr("Folders of")));
  ui.currentUser3 = named(new QLabel, "currentUser3");
  owner->addWidget(ui.currentUser3);
  owner->addStretch(1);
  grid->addLayout(owner, 5, 0, 1, 3);
  return group;
}

QGroupBox* buildCompression(BackupUi& ui) {
  auto* group = new QGroupBox(QObject::tr("Compression"));
  auto* layout = new QVBoxLayout(group);
  ui.chkCompressBackup =
      named(new QCheckBox(QObject::tr("&Compress the backup")), "chkCompressBackup");
  ui.chkCompressBackup->setChecked(true);
  ui.chkMaximumCompression =
      named(new QCheckBox(QObject::tr("Ma&ximum compression")), "chkMaximumCompression");
  ui.compressionNote = dimmedLabel("compressionNote");
  ui.compressionNote->setText(
      QObject::tr("Maximum compression makes a smaller backup but takes much longer."));
  ui.compressionNote->setWordWrap(true);
  layout->addWidget(ui.chkCompressBackup);
  auto* maximum = new QVBoxLayout;
  maximum->setContentsMargins(24, 0, 0, 0);
  maximum->addWidget(ui.chkMaximumCompression);
  maximum->addWidget(ui.compressionNote);
  layout->addLayout(maximum);
  layout->addStretch(1);
  return group;
}

QGroupBox* buildFolder(BackupUi& ui) {
  auto* group = new QGroupBox(QObject::tr("Backup folder"));
  auto* grid = new QGridLayout(group);
  grid->setColumnStretch(1, 1);
  ui.backupFolderPath = named(new QLabel, "backupFolderPath");
  ui.backupFolderPath->setTextInteractionFlags(Qt::TextSelectableByMouse);
  ui.backupFolderPath->setWordWrap(true);
  grid->addWidget(new QLabel(QObject::tr("Location:")), 0, 0);
  grid->addWidget(ui.backupFolderPath, 0, 1, 1, 2);
  grid->addWidget(new QLabel(QObject::tr("In use:")), 1, 0);
  ui.totalBackupFolderSize = sizeLabel("totalBackupFolderSize");
  ui.totalBackupFolderSize->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  grid->addWidget(ui.totalBackupFolderSize, 1, 1);
  ui.btnOpenBackupFolder =
      named(new QPushButton(
                ResourceIcons::themed(QStringLiteral("folder-open"), QStringLiteral("folder")),
                QObject::tr("&Show Backups")),
            "btnOpenBackupFolder");
  grid->addWidget(ui.btnOpenBackupFolder, 1, 2);
  auto* owner = new QHBoxLayout;
  owner->setSpacing(4);
  owner->addWidget(new QLabel(QObject::tr("Each backup of")));
  ui.currentUser4 = named(new QLabel, "currentUser4");
  owner->addWidget(ui.currentUser4);
  owner->addWidget(new QLabel(QObject::tr("restores itself when opened.")));
  owner->addStretch(1);
  grid->addLayout(owner, 2, 0, 1, 3);
  return group;
}

void addStatusRow(QGridLayout* grid, int line, QCheckBox*& mark, const char* markName,
                  const QString& title, QProgressBar*& spin, const char* spinName, QLabel*& stat,
                  const char* statName) {
  mark = named(new QCheckBox(title), markName);
  // A mark to look at, not to press.
  mark->setAttribute(Qt::WA_TransparentForMouseEvents);
  mark->setFocusPolicy(Qt::NoFocus);
  spin = spinner(spinName, kSpinnerWidth);
  stat = sizeLabel(statName);
  grid->addWidget(mark, line, 0);
  grid->addWidget(spin, line, 1);
  grid->addWidget(stat, line, 2);
}

QFrame* buildStatusWindow(BackupUi& ui, QWidget* owner) {
  auto* window =
      named(new QFrame(owner, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
            "backUpWindow");
  window->setWindowTitle(QObject::tr("Backup"));
  window->setFrameShape(QFrame::StyledPanel);
  window->setAutoFillBackground(true);
  auto* layout = new QVBoxLayout(window);
  layout->setContentsMargins(14, 12, 14, 12);

  auto* header = new QHBoxLayout;
  header->addWidget(
      iconLabel(ResourceIcons::themed(QStringLiteral("document-save"), QStringLiteral("archive")),
                kStatusIconSize));
  auto* title = new QVBoxLayout;
  title->setSpacing(0);
  title->addWidget(boldLabel(QObject::tr("Backing up"), 1.1));
  ui.currentUser2 = dimmedLabel("currentUser2");
  title->addWidget(ui.currentUser2);
  header->addLayout(title, 1);
  layout->addLayout(header);

  auto* grid = new QGridLayout;
  grid->setColumnStretch(0, 1);
  addStatusRow(grid, 0, ui.chkAppsIndicator, "chkAppsIndicator", QObject::tr("Preferences"),
               ui.preferencesBackupSpin, "preferencesBackupSpin", ui.prefsFileSizeStat,
               "prefsFileSizeStat");
  addStatusRow(grid, 1, ui.chkDocsIndicator, "chkDocsIndicator", QObject::tr("Documents"),
               ui.documentsBackupSpin, "documentsBackupSpin", ui.docsFileSizeStat,
               "docsFileSizeStat");
  addStatusRow(grid, 2, ui.chkMailIndicator, "chkMailIndicator", QObject::tr("Mail"),
               ui.emailBackupSpin, "emailBackupSpin", ui.mailFileSizeStat, "mailFileSizeStat");
  grid->addWidget(new QLabel(QObject::tr("Archive size:")), 3, 0, 1, 2);
  ui.totalFileSizeStat = sizeLabel("totalFileSizeStat");
  grid->addWidget(ui.totalFileSizeStat, 3, 2);
  layout->addLayout(grid);

  auto* bottom = new QHBoxLayout;
  ui.backupProgressIndicator = named(new QProgressBar, "backupProgressIndicator");
  ui.backupProgressIndicator->setRange(0, 1);
  ui.backupProgressIndicator->setValue(0);
  ui.backupProgressIndicator->setTextVisible(false);
  bottom->addWidget(ui.backupProgressIndicator, 1);
  ui.btnStopBackupProcess =
      named(new QPushButton(QIcon::fromTheme(QStringLiteral("process-stop")), QObject::tr("&Stop")),
            "btnStopBackupProcess");
  bottom->addWidget(ui.btnStopBackupProcess);
  layout->addLayout(bottom);
  window->setFixedSize(window->sizeHint().expandedTo(QSize(340, 0)));
  return window;
}

}  // namespace

BackupUi buildBackupUi(QWidget* page) {
  BackupUi ui;
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(buildHeader(ui));
  auto* columns = new QHBoxLayout;
  columns->addWidget(buildParts(ui), 3);
  columns->addWidget(buildCompression(ui), 2);
  layout->addLayout(columns);
  layout->addWidget(buildFolder(ui));
  layout->addStretch(1);

  auto* actions = new QHBoxLayout;
  actions->addStretch(1);
  ui.btnBackupNow = named(new QPushButton(ResourceIcons::themed(QStringLiteral("document-save"),
                                                                QStringLiteral("archive")),
                                          QObject::tr("&Back Up Now")),
                          "btnBackupNow");
  ui.btnBackupNow->setDefault(true);
  actions->addWidget(ui.btnBackupNow);
  layout->addLayout(actions);

  ui.backUpWindow = buildStatusWindow(ui, page);
  return ui;
}
