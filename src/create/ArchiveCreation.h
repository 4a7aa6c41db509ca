#pragma once

#include "create/CompressionJob.h"
#include "create/JobUi.h"
#include "engine/AddingWindows.h"

#include <QObject>
#include <QPointer>
#include <QThread>

#include <atomic>
#include <memory>

class CompressingWindow;
class CreateArchiveWindow;
class CreateTab;
class Dialogs;
class OperationStatus;
class QMainWindow;
class QPlainTextEdit;
class QProgressBar;
class QThread;
class ToolRunner;
class UploadingFTP;

// Making a new archive from the create-archive tab: asks where it goes,
// shows the options, and runs the compression job on a worker thread. The
// job reaches the windows only through JobUi, which this class carries
// over to the GUI thread. Its windows also show files being added to the
// open archive.
class ArchiveCreation : public QObject, public JobUi, public AddingWindows {
  Q_OBJECT

 public:
  struct Widgets {
    QMainWindow* mainWindow;
    CreateTab* createTab;
    QPlainTextEdit* fileContentView;
    QProgressBar* compressionSpin;
    OperationStatus* operationStatus;
  };

  ArchiveCreation(ToolRunner& compressionProcess, Dialogs& dialogs, Widgets widgets,
                  QObject* parent = nullptr);
  ~ArchiveCreation() override;

  void btnCreateAction();
  void btnCompress();
  void btnCancelCompressing();
  // Offered only once the e-mail settings hold an address.
  void chkSendEmailAfterUploadIsCompleted();

  CreateArchiveWindow* createArchiveWindow() const { return createArchiveWindow_; }
  CompressingWindow* compressingWindow() const { return compressingWindow_; }
  QThread* compressionThread() const { return compressionThread_; }
  ToolRunner& compressionProcess() const { return compressionProcess_; }
  const QString& itemToCompress() const { return itemToCompress_; }

  // JobUi
  void orderOutCreateWindow() override;
  void setCompressionSpinning(bool spinning) override;
  void setCompressingArchiveName(const QString& name) override;
  void showCompressingWindow() override;
  void hideCompressingWindow() override;
  void setProgressRange(int maximum, int value) override;
  void setProgressValue(int value) override;
  void setProgressIndeterminate() override;
  void setStatus(const QString& status) override;
  void setFileContent(const QString& text) override;
  void selectRow(int row) override;
  void toggleCreateWindow() override;
  void bringCreateWindowForwardIfHidden() override;
  void alert(const QString& title, const QString& message) override;
  QString chooseArchivesFolder() override;
  void uploadFileToFTP(const QString& archiveName, const QString& folder) override;
  void reportFailure(const QString& message, const QString& details) override;
  void reportCreated(const CreatedArchives& archives) override;

  // AddingWindows
  void leaveCreation() override;
  void showAdding(const QString& archiveName, int count) override;
  void setAdded(int done) override;
  void hideAdding() override;

 signals:
  void jobFinished();

 private:
  CompressionRequest requestFromWindows() const;
  void compressingThreadProcedure(CompressionRequest request,
                                  std::shared_ptr<std::atomic<bool>> cancelled);

  // Runs the job's tools one at a time, so that cancel can end the one
  // running now.
  ToolRunner& compressionProcess_;
  Dialogs& dialogs_;
  Widgets widgets_;
  CreateArchiveWindow* createArchiveWindow_;
  CompressingWindow* compressingWindow_;
  UploadingFTP* uploading_;
  QPointer<QThread> compressionThread_;
  // Still running after a cancel until its current step ends.
  QPointer<QThread> runningThread_;
  std::shared_ptr<std::atomic<bool>> cancelled_;
  QString itemToCompress_;
};
