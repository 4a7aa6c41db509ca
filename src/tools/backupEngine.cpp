#include "tools/backupEngine.h"

#include "engine/OperationStatus.h"
#include "engine/ToolLocations.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "tools/BackupJob.h"
#include "tools/BackupNames.h"
#include "tools/BackupSizeText.h"

#include <QCheckBox>
#include <QDir>
#include <QFileInfo>
#include <QFrame>
#include <QGuiApplication>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPropertyAnimation>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QThread>

#include <pwd.h>
#include <unistd.h>

namespace {

constexpr int kSlideMs = 350;
constexpr int kFadeMs = 250;

QString loginName() {
  if (const passwd* account = getpwuid(getuid()))
    return QString::fromLocal8Bit(account->pw_name);
  return qEnvironmentVariable("USER");
}

void spin(QProgressBar* bar, bool busy) {
  bar->setRange(0, busy ? 0 : 1);
  bar->setValue(0);
}

// Where the status window rests: the top right corner of the screen's
// usable area; offset moves it right by its own width, off the screen.
QPoint statusPosition(const QWidget* window, const QWidget* near, bool offScreen) {
  const QScreen* screen = near ? near->screen() : QGuiApplication::primaryScreen();
  const QRect area = screen ? screen->availableGeometry() : QRect(0, 0, 1024, 768);
  const int right = area.x() + area.width();
  return {offScreen ? right : right - window->width(), area.y()};
}

}  // namespace

backupEngine::backupEngine(ToolRunner& runner, Dialogs& dialogs, Desktop& desktop, QWidget* page,
                           QWidget* mainWindow, QObject* parent)
    : QObject(parent),
      runner_(runner),
      dialogs_(dialogs),
      desktop_(desktop),
      mainWindow_(mainWindow),
      ui_(buildBackupUi(page)),
      restoreBundle_(ToolLocations::sharedResourcesFolder() + QStringLiteral("/backupmodule.app")) {
  connect(ui_.chkCompressBackup, &QCheckBox::toggled, this, &backupEngine::chkBoxCompressBackup);
  connect(ui_.btnGetSizes, &QPushButton::clicked, this, &backupEngine::btnGetSizes);
  connect(ui_.btnBackupNow, &QPushButton::clicked, this, &backupEngine::btnBackupNow);
  connect(ui_.btnStopBackupProcess, &QPushButton::clicked, this,
          &backupEngine::btnStopBackupProcess);
  connect(ui_.btnOpenBackupFolder, &QPushButton::clicked, this, &backupEngine::btnOpenBackupFolder);
  awakeFromNib();
}

// The tab's widgets may be gone already: only the thread is stopped.
backupEngine::~backupEngine() {
  if (thread_) {
    processTerminated = true;
    process.cancel();
    thread_->wait();
  }
}

void backupEngine::awakeFromNib() {
  const QString user = loginName();
  for (QLabel* label : {ui_.currentUser1, ui_.currentUser2, ui_.currentUser3, ui_.currentUser4})
    label->setText(user);
  backupDir = BackupNames::backupFolder();
  ui_.backupFolderPath->setText(QDir::toNativeSeparators(backupDir));
  chkBoxCompressBackup();
}

void backupEngine::chkBoxCompressBackup() {
  const bool compressed = ui_.chkCompressBackup->isChecked();
  ui_.chkMaximumCompression->setVisible(compressed);
  ui_.compressionNote->setVisible(compressed);
}

QString backupEngine::getDirSize(const QString& path) {
  return BackupSizeText::folder(backupDirSize(runner_, path));
}

void backupEngine::btnGetSizes() {
  for (const BackupPart part : kBackupParts)
    sizeField(part)->setText(getDirSize(BackupParts::folder(part)));
  float total = 0;
  for (const BackupPart part : {BackupPart::Documents, BackupPart::Preferences, BackupPart::Mail}) {
    if (check(part)->isChecked())
      total += BackupSizeText::leadingNumber(sizeField(part)->text());
  }
  if (const std::optional<QString> text = BackupSizeText::total(total))
    ui_.totalBackUpSize->setText(*text);
  const QString folder = BackupNames::backupFolder();
  ui_.backupFolderPath->setText(QDir::toNativeSeparators(folder));
  if (QFileInfo::exists(folder))
    ui_.totalBackupFolderSize->setText(getDirSize(folder));
}

void backupEngine::btnBackupNow() {
  if (thread_)
    return;
  fadeMainWindow(0.0);
  showStatusWindow();
  const QString folder = BackupNames::backupFolder();
  ui_.backupFolderPath->setText(QDir::toNativeSeparators(folder));
  if (!QFileInfo(folder).isDir())
    QDir().mkpath(folder);
  if (!QFileInfo(folder).isDir()) {
    dialogs_.alert(QStringLiteral("Unable to open the backup directory!"),
                   QStringLiteral("Quillet can not open the backup directory, please open the "
                                  "preferences panel and set new one."),
                   QStringLiteral("OK"));
    hideStatusWindow();
    emit backupFinished();
    return;
  }
  startThread(folder);
}

void backupEngine::startThread(const QString& folder) {
  BackupRequest request;
  request.backupFolder = folder;
  for (const BackupPart part : kBackupParts) {
    if (check(part)->isChecked())
      request.parts << part;
  }
  request.levelSwitch = levelSwitch();
  request.restoreBundle = restoreBundle_;
  request.sevenZip = ToolLocations::sevenZip();

  for (const BackupPart part : kBackupParts) {
    sizeStat(part)->setText(QStringLiteral("0 KB"));
    doneMark(part)->setChecked(false);
  }
  ui_.totalFileSizeStat->setText(QStringLiteral("—"));
  spin(ui_.backupProgressIndicator, true);
  ui_.btnBackupNow->setEnabled(false);
  ui_.btnStopBackupProcess->setEnabled(true);

  processTerminated = false;
  auto* job = new BackupJob(request, process, processTerminated);
  connect(job, &BackupJob::partStarted, this, &backupEngine::partStarted);
  connect(job, &BackupJob::partDone, this, &backupEngine::partDone);
  connect(job, &BackupJob::archiveSizeChanged, ui_.totalFileSizeStat, &QLabel::setText);
  madeBackup_.clear();
  partFailed_ = false;
  connect(job, &BackupJob::packaged, this,
          [this](const QString& application) { madeBackup_ = application; });
  connect(job, &BackupJob::partFailed, this, [this](BackupPart part, const QString& message) {
    partFailed_ = true;
    showStatus(tr("Backup of %1: %2").arg(BackupParts::title(part), message));
  });
  thread_ = QThread::create(&BackupJob::threadProcedure, job);
  connect(thread_, &QThread::finished, job, &QObject::deleteLater);
  connect(thread_, &QThread::finished, thread_, &QObject::deleteLater);
  connect(thread_, &QThread::finished, this, &backupEngine::threadFinished);
  thread_->start();
}

void backupEngine::threadFinished() {
  thread_ = nullptr;
  spin(ui_.backupProgressIndicator, false);
  const QString folder = BackupNames::backupFolder();
  if (QFileInfo::exists(folder))
    ui_.totalBackupFolderSize->setText(getDirSize(folder));
  hideStatusWindow();
  ui_.btnBackupNow->setEnabled(true);
  // A part that failed is the news that stays.
  if (!partFailed_ && !madeBackup_.isEmpty())
    showStatus(tr("Backup made: %1").arg(OperationStatus::placeText(madeBackup_)));
  emit backupFinished();
}

void backupEngine::partStarted(BackupPart part) {
  spinner(part)->show();
  spin(spinner(part), true);
}

void backupEngine::partDone(BackupPart part) {
  doneMark(part)->setChecked(true);
  spin(spinner(part), false);
  spinner(part)->hide();
}

void backupEngine::btnStopBackupProcess() {
  processTerminated = true;
  process.cancel();
  ui_.btnStopBackupProcess->setEnabled(false);
}

void backupEngine::btnOpenBackupFolder() {
  const QString folder = BackupNames::backupFolder();
  if (!QFileInfo(folder).isDir()) {
    dialogs_.alert(QStringLiteral("Backup folder does not exists."),
                   QStringLiteral("You still have no backups. No backup folder is created yet."),
                   QStringLiteral("OK"));
    return;
  }
  desktop_.showFolder(folder);
}

void backupEngine::showStatusWindow() {
  QFrame* window = ui_.backUpWindow;
  window->move(statusPosition(window, mainWindow_, true));
  window->show();
  window->raise();
  auto* slide = new QPropertyAnimation(window, "pos", window);
  slide->setDuration(kSlideMs);
  slide->setEasingCurve(QEasingCurve::OutCubic);
  slide->setEndValue(statusPosition(window, mainWindow_, false));
  slide->start(QAbstractAnimation::DeleteWhenStopped);
}

void backupEngine::hideStatusWindow() {
  QFrame* window = ui_.backUpWindow;
  auto* slide = new QPropertyAnimation(window, "pos", window);
  slide->setDuration(kSlideMs);
  slide->setEasingCurve(QEasingCurve::InCubic);
  slide->setEndValue(statusPosition(window, mainWindow_, true));
  connect(slide, &QPropertyAnimation::finished, window, &QWidget::hide);
  slide->start(QAbstractAnimation::DeleteWhenStopped);
  fadeMainWindow(1.0);
  if (mainWindow_) {
    mainWindow_->raise();
    mainWindow_->activateWindow();
  }
}

void backupEngine::fadeMainWindow(qreal opacity) {
  if (!mainWindow_)
    return;
  auto* fade = new QPropertyAnimation(mainWindow_, "windowOpacity", mainWindow_);
  fade->setDuration(kFadeMs);
  fade->setEndValue(opacity);
  fade->start(QAbstractAnimation::DeleteWhenStopped);
}

void backupEngine::showStatus(const QString& message) {
  if (auto* window = qobject_cast<QMainWindow*>(mainWindow_.data()))
    window->statusBar()->showMessage(message);
}

QString backupEngine::levelSwitch() const {
  if (!ui_.chkCompressBackup->isChecked())
    return QStringLiteral("-mx0");
  return ui_.chkMaximumCompression->isChecked() ? QStringLiteral("-mx9") : QStringLiteral("-mx5");
}

QCheckBox* backupEngine::check(BackupPart part) const {
  const std::array boxes{ui_.chkAppsPrefs, ui_.chkDox, ui_.chkEmail};
  return boxes[static_cast<int>(part)];
}

QLabel* backupEngine::sizeField(BackupPart part) const {
  const std::array fields{ui_.backUpAppPrefsSize, ui_.backUpDocsSize, ui_.backUpEmail};
  return fields[static_cast<int>(part)];
}

QCheckBox* backupEngine::doneMark(BackupPart part) const {
  const std::array marks{ui_.chkAppsIndicator, ui_.chkDocsIndicator, ui_.chkMailIndicator};
  return marks[static_cast<int>(part)];
}

QProgressBar* backupEngine::spinner(BackupPart part) const {
  const std::array spinners{ui_.preferencesBackupSpin, ui_.documentsBackupSpin,
                            ui_.emailBackupSpin};
  return spinners[static_cast<int>(part)];
}

QLabel* backupEngine::sizeStat(BackupPart part) const {
  const std::array stats{ui_.prefsFileSizeStat, ui_.docsFileSizeStat, ui_.mailFileSizeStat};
  return stats[static_cast<int>(part)];
}
