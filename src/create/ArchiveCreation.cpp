#include "create/ArchiveCreation.h"

#include "create/CompressingWindow.h"
#include "create/CreateArchiveListView.h"
#include "create/CreateArchiveWindow.h"
#include "create/CreateTab.h"
#include "create/SelectionListModel.h"
#include "create/UploadingFTP.h"
#include "engine/OperationStatus.h"
#include "engine/ToolLocations.h"
#include "platform/Dialogs.h"
#include "platform/GuiThread.h"
#include "platform/PreferenceKeys.h"
#include "platform/ToolRunner.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QStatusBar>
#include <QTableView>
#include <QThread>

ArchiveCreation::ArchiveCreation(ToolRunner& compressionProcess, Dialogs& dialogs, Widgets widgets,
                                 QObject* parent)
    : QObject(parent),
      compressionProcess_(compressionProcess),
      dialogs_(dialogs),
      widgets_(widgets),
      createArchiveWindow_(new CreateArchiveWindow(JobSettings::shared(), widgets.mainWindow)),
      compressingWindow_(new CompressingWindow(widgets.mainWindow)),
      // curl runs on the job's runner, so that one cancel reaches it.
      uploading_(new UploadingFTP(
          compressionProcess, dialogs, widgets.mainWindow, [this] { btnCancelCompressing(); },
          this)) {
  connect(widgets.createTab->btnCreateAction(), &QPushButton::clicked, this,
          &ArchiveCreation::btnCreateAction);
  connect(widgets.createTab->chkEveryItemNewArchive(), &QCheckBox::clicked, createArchiveWindow_,
          &CreateArchiveWindow::chkBoxEveryItemNewArchive);
  connect(createArchiveWindow_, &CreateArchiveWindow::compressRequested, this,
          &ArchiveCreation::btnCompress);
  connect(compressingWindow_, &CompressingWindow::cancelPressed, this,
          &ArchiveCreation::btnCancelCompressing);
  connect(createArchiveWindow_->chkSendMailAfterUploadIsCompletedOutlet(), &QCheckBox::clicked,
          this, &ArchiveCreation::chkSendEmailAfterUploadIsCompleted);
}

ArchiveCreation::~ArchiveCreation() {
  if (!runningThread_)
    return;
  btnCancelCompressing();
  // The job may be waiting for an answer from this thread.
  while (runningThread_ && !runningThread_->wait(10))
    QCoreApplication::processEvents();
}

void ArchiveCreation::btnCreateAction() {
  if (widgets_.createTab->list()->model()->rowCount() == 0) {
    dialogs_.alert(QStringLiteral("Attention"),
                   QStringLiteral("Please add at least one file or folder to your archive."),
                   QStringLiteral("Close"));
    return;
  }
  if (widgets_.createTab->chkEveryItemNewArchive()->isChecked()) {
    itemToCompress_ = QStringLiteral("unknown");
    createArchiveWindow_->disableSplitAndSfx();
  } else {
    Dialogs::SavePanel panel;
    panel.title = tr("Save archive as");
    panel.startFolder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    panel.fileName = QStringLiteral("untitled");
    const QString chosen = dialogs_.chooseToSave(widgets_.mainWindow, panel);
    if (chosen.isEmpty())
      return;
    itemToCompress_ = chosen;
  }
  createArchiveWindow_->selectionForCompression()->setText(itemToCompress_);
  createArchiveWindow_->centreAndShow();
}

void ArchiveCreation::chkSendEmailAfterUploadIsCompleted() {
  using namespace PreferenceKeys;
  QCheckBox* sendMail = createArchiveWindow_->chkSendMailAfterUploadIsCompletedOutlet();
  if (!PreferencesStore::contains(kMailaddress) || !PreferencesStore::contains(kMailmessage)) {
    dialogs_.alert(QStringLiteral("Email settings not configured"),
                   QStringLiteral("Please setup your email settings first"), QStringLiteral("OK"));
    sendMail->setChecked(false);
  }
  if (PreferencesStore::contains(kMailaddress) && PreferencesStore::text(kMailaddress).isEmpty()) {
    dialogs_.alert(QStringLiteral("Email address not set"),
                   QStringLiteral("Please set an email address to send the message to."),
                   QStringLiteral("OK"));
    sendMail->setChecked(false);
  }
}

CompressionRequest ArchiveCreation::requestFromWindows() const {
  const CreateOptions& options = createArchiveWindow_->options();
  CompressionRequest request;
  request.settings = JobSettings::shared();
  request.itemToCompress = createArchiveWindow_->selectionForCompression()->text();
  for (const SelectionRow& row : widgets_.createTab->list()->model()->rows())
    request.items << row.fullPath;
  request.everyItem = widgets_.createTab->chkEveryItemNewArchive()->isChecked();
  request.passwordProtected = options.passwordChecked;
  request.password = options.passwordText;
  request.passwordConfirmation = options.confirmText;
  request.split = options.splitChecked;
  request.splitSizeText = options.splitSizeText;
  request.selfExtracting = options.sfxChecked;
  request.notes = createArchiveWindow_->notes();
  request.upload = options.uploadChecked;
  request.excludeDsStore = PreferencesStore::isYes(QStringLiteral("excludeDS_Store"));
  request.startFolder = QDir::currentPath();
  request.stubBundle = ToolLocations::sharedResourcesFolder() + QStringLiteral("/sfxmodule.app");
  request.homeFolder = QDir::homePath();
  return request;
}

void ArchiveCreation::btnCompress() {
  if (compressionThread_)
    return;
  cancelled_ = std::make_shared<std::atomic<bool>>(false);
  widgets_.operationStatus->clear();
  QThread* thread = QThread::create(&ArchiveCreation::compressingThreadProcedure, this,
                                    requestFromWindows(), cancelled_);
  thread->setObjectName(QStringLiteral("compressionThread"));
  connect(thread, &QThread::finished, thread, &QObject::deleteLater);
  connect(thread, &QThread::finished, this, &ArchiveCreation::jobFinished);
  compressionThread_ = runningThread_ = thread;
  thread->start();
}

void ArchiveCreation::btnCancelCompressing() {
  if (!runningThread_)
    return;
  cancelled_->store(true);
  compressionProcess().cancel();
  compressionThread_ = nullptr;
}

void ArchiveCreation::compressingThreadProcedure(CompressionRequest request,
                                                 std::shared_ptr<std::atomic<bool>> cancelled) {
  CompressionJob job(std::move(request), compressionProcess_, *this,
                     [cancelled] { return cancelled->load(); });
  job.run();
  const QString split = job.splitVolumesSize();
  runInThreadOf(
      this, [split] { JobSettings::shared().splitVolumesSize = split; }, false);
}

void ArchiveCreation::orderOutCreateWindow() {
  runInThreadOf(
      this, [this] { createArchiveWindow_->hide(); }, false);
}

void ArchiveCreation::setCompressionSpinning(bool spinning) {
  runInThreadOf(
      this, [this, spinning] { widgets_.compressionSpin->setVisible(spinning); }, false);
}

void ArchiveCreation::setCompressingArchiveName(const QString& name) {
  runInThreadOf(
      this, [this, name] { compressingWindow_->compressingArchiveName()->setText(name); }, false);
}

void ArchiveCreation::showCompressingWindow() {
  runInThreadOf(
      this,
      [this] {
        if (!compressingWindow_->isVisible())
          compressingWindow_->centreAndShow();
      },
      false);
}

void ArchiveCreation::hideCompressingWindow() {
  runInThreadOf(
      this,
      [this] {
        compressingWindow_->hide();
        compressingWindow_->compressingLoader()->setRange(0, 1);
        compressingWindow_->compressingLoader()->setValue(0);
        compressingWindow_->compressingWindowStatus()->setText(QStringLiteral("Compressing..."));
      },
      false);
}

void ArchiveCreation::setProgressRange(int maximum, int value) {
  runInThreadOf(
      this,
      [this, maximum, value] {
        compressingWindow_->compressingLoader()->setRange(0, maximum);
        compressingWindow_->compressingLoader()->setValue(value);
      },
      false);
}

void ArchiveCreation::setProgressValue(int value) {
  runInThreadOf(
      this, [this, value] { compressingWindow_->compressingLoader()->setValue(value); }, false);
}

void ArchiveCreation::setProgressIndeterminate() {
  runInThreadOf(
      this, [this] { compressingWindow_->compressingLoader()->setRange(0, 0); }, false);
}

void ArchiveCreation::setStatus(const QString& status) {
  runInThreadOf(
      this, [this, status] { compressingWindow_->compressingWindowStatus()->setText(status); },
      false);
}

void ArchiveCreation::setFileContent(const QString& text) {
  runInThreadOf(
      this, [this, text] { widgets_.fileContentView->setPlainText(text); }, false);
}

void ArchiveCreation::selectRow(int row) {
  runInThreadOf(
      this, [this, row] { widgets_.createTab->list()->tableView()->selectRow(row); }, false);
}

void ArchiveCreation::toggleCreateWindow() {
  runInThreadOf(
      this, [this] { createArchiveWindow_->setVisible(!createArchiveWindow_->isVisible()); }, true);
}

void ArchiveCreation::bringCreateWindowForwardIfHidden() {
  runInThreadOf(
      this,
      [this] {
        if (!createArchiveWindow_->isVisible())
          createArchiveWindow_->centreAndShow();
      },
      false);
}

void ArchiveCreation::alert(const QString& title, const QString& message) {
  runInThreadOf(
      this, [this, title, message] { dialogs_.alert(title, message, QStringLiteral("OK")); }, true);
}

QString ArchiveCreation::chooseArchivesFolder() {
  QString chosen;
  runInThreadOf(
      this,
      [this, &chosen] {
        chosen = dialogs_
                     .chooseToOpen(widgets_.mainWindow,
                                   Dialogs::OpenPanel::folder(
                                       QStringLiteral("Select directory to create archives in")))
                     .value(0);
      },
      true);
  return chosen;
}

void ArchiveCreation::uploadFileToFTP(const QString& archiveName, const QString& folder) {
  bool sendMail = false;
  runInThreadOf(
      this,
      [this, &sendMail] {
        sendMail = createArchiveWindow_->chkSendMailAfterUploadIsCompletedOutlet()->isChecked();
      },
      true);
  uploading_->uploadFileToFTP(archiveName, folder, sendMail);
}

void ArchiveCreation::reportFailure(const QString& message, const QString& details) {
  runInThreadOf(
      this, [this, message, details] { widgets_.operationStatus->showFailure(message, details); },
      false);
}

void ArchiveCreation::reportCreated(const CreatedArchives& archives) {
  runInThreadOf(
      this,
      [this, archives] { widgets_.operationStatus->showDone(archives.text(), archives.folder()); },
      false);
}

void ArchiveCreation::leaveCreation() {
  createArchiveWindow_->hide();
  JobSettings::shared().splitVolumesSize = QStringLiteral("-v");
}

void ArchiveCreation::showAdding(const QString& archiveName, int count) {
  setCompressingArchiveName(archiveName);
  showCompressingWindow();
  setProgressRange(count, 0);
}

void ArchiveCreation::setAdded(int done) {
  setProgressValue(done);
}

void ArchiveCreation::hideAdding() {
  hideCompressingWindow();
}
