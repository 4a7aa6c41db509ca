#include "create/UploadingFTP.h"

#include "platform/Dialogs.h"
#include "platform/GuiThread.h"
#include "platform/ObjectNames.h"
#include "platform/ResourceIcons.h"
#include "platform/ToolRunner.h"
#include "platform/WindowPlacement.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QStyle>
#include <QThread>
#include <QVBoxLayout>

namespace {

QLabel* valueLabel(const char* objectName) {
  auto* label = named(new QLabel, objectName);
  label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  label->setWordWrap(true);
  label->setMinimumWidth(320);
  return label;
}

}  // namespace

UploadingFTP::UploadingFTP(ToolRunner& uploadingProcess, Dialogs& dialogs, QMainWindow* mainWindow,
                           std::function<void()> cancelCompression, QObject* parent)
    : QObject(parent),
      uploadingProcess_(uploadingProcess),
      dialogs_(dialogs),
      mainWindow_(mainWindow),
      cancelCompression_(std::move(cancelCompression)),
      // A window of its own: it stays in sight while the main window is
      // down in the taskbar.
      outletUploadingWindow_(named(new QWidget(nullptr, Qt::Window), "outletUploadingWindow")),
      outletFTPAddress_(valueLabel("outletFTPAddress")),
      outletUploadingFileName_(valueLabel("outletUploadingFileName")),
      outletUploadingFTPLoadingIndicator_(
          named(new QProgressBar, "outletUploadingFTPLoadingIndicator")),
      btnUploadingFTPCancel_(named(new QPushButton(tr("Cancel")), "btnUploadingFTPCancel")) {
  outletUploadingWindow_->setWindowTitle(tr("Uploading"));
  outletUploadingFTPLoadingIndicator_->setRange(0, 1);
  outletUploadingFTPLoadingIndicator_->setTextVisible(false);

  auto* icon = new QLabel;
  const int side = outletUploadingWindow_->style()->pixelMetric(QStyle::PM_LargeIconSize);
  icon->setPixmap(ResourceIcons::themed(QStringLiteral("folder-cloud"), QStringLiteral("archive"))
                      .pixmap(side, side));
  icon->setAlignment(Qt::AlignTop);
  auto* heading = new QLabel(tr("<b>Uploading the archive to the FTP server</b>"));
  auto* details = new QFormLayout;
  details->addRow(tr("Server:"), outletFTPAddress_);
  details->addRow(tr("Archive:"), outletUploadingFileName_);
  auto* text = new QVBoxLayout;
  text->addWidget(heading);
  text->addLayout(details);
  text->addWidget(outletUploadingFTPLoadingIndicator_);
  auto* top = new QHBoxLayout;
  top->addWidget(icon);
  top->addLayout(text, 1);

  auto* buttons = new QDialogButtonBox;
  buttons->addButton(btnUploadingFTPCancel_, QDialogButtonBox::RejectRole);
  auto* layout = new QVBoxLayout(outletUploadingWindow_);
  layout->addLayout(top);
  layout->addWidget(buttons);
  connect(btnUploadingFTPCancel_, &QPushButton::clicked, this,
          &UploadingFTP::btnUploadingFTPCancel);
}

UploadingFTP::~UploadingFTP() {
  delete outletUploadingWindow_;
}

void UploadingFTP::uploadFileToFTP(const QString& path, const QString& folder, bool sendMail) {
  FtpUpload(uploadingProcess_, *this, isUploadingTerminatedByTheUser_)
      .uploadFileToFTP(path, folder, sendMail);
}

void UploadingFTP::btnUploadingFTPCancel() {
  isUploadingTerminatedByTheUser_.store(true);
  uploadingProcess_.cancel();
  cancelCompression_();
  bringMainWindowBack();
}

void UploadingFTP::showUploadingWindow(const QString& address, const QString& fileName) {
  runInThreadOf(
      this,
      [this, address, fileName] {
        outletFTPAddress_->setText(address);
        outletUploadingFileName_->setText(fileName);
        QWidget* window = outletUploadingWindow_;
        window->adjustSize();
        WindowPlacement::centreOnScreen(window, mainWindow_ ? mainWindow_->screen() : nullptr);
        window->show();
        window->raise();
        if (mainWindow_)
          mainWindow_->showMinimized();
      },
      false);
}

void UploadingFTP::setUploadingIndicator(bool running) {
  runInThreadOf(
      this, [this, running] { outletUploadingFTPLoadingIndicator_->setRange(0, running ? 0 : 1); },
      false);
}

void UploadingFTP::alert(const QString& title, const QString& message) {
  runInThreadOf(
      this, [this, title, message] { dialogs_.alert(title, message, QStringLiteral("OK")); }, true);
}

void UploadingFTP::finishUploading() {
  runInThreadOf(
      this,
      [this] {
        outletUploadingWindow_->hide();
        bringMainWindowBack();
      },
      false);
}

void UploadingFTP::reportFailure(const QString& message) {
  runInThreadOf(
      this,
      [this, message] {
        if (mainWindow_)
          mainWindow_->statusBar()->showMessage(message);
      },
      false);
}

void UploadingFTP::bringMainWindowBack() {
  if (mainWindow_ && mainWindow_->isMinimized()) {
    mainWindow_->setWindowState(mainWindow_->windowState() & ~Qt::WindowMinimized);
    mainWindow_->activateWindow();
  }
}
