#pragma once

#include "create/FtpUpload.h"

#include <QObject>
#include <QPointer>

#include <atomic>
#include <functional>

class Dialogs;
class QLabel;
class QMainWindow;
class QProgressBar;
class QPushButton;
class QWidget;
class ToolRunner;

// The upload after a compression job and its window. The upload runs on
// the job's worker thread; this carries what it shows over to the GUI
// thread. Cancel ends curl and the job.
class UploadingFTP : public QObject, public UploadUi {
  Q_OBJECT

 public:
  UploadingFTP(ToolRunner& uploadingProcess, Dialogs& dialogs, QMainWindow* mainWindow,
               std::function<void()> cancelCompression, QObject* parent = nullptr);
  ~UploadingFTP() override;

  // From the worker thread: path is the archive's name relative to folder.
  void uploadFileToFTP(const QString& path, const QString& folder, bool sendMail);
  void btnUploadingFTPCancel();

  QWidget* outletUploadingWindow() const { return outletUploadingWindow_; }
  QLabel* outletFTPAddress() const { return outletFTPAddress_; }
  QLabel* outletUploadingFileName() const { return outletUploadingFileName_; }
  QPushButton* btnCancel() const { return btnUploadingFTPCancel_; }
  bool isUploadingTerminatedByTheUser() const { return isUploadingTerminatedByTheUser_.load(); }

  // UploadUi
  void showUploadingWindow(const QString& address, const QString& fileName) override;
  void setUploadingIndicator(bool running) override;
  void alert(const QString& title, const QString& message) override;
  void finishUploading() override;
  void reportFailure(const QString& message) override;

 private:
  void bringMainWindowBack();

  ToolRunner& uploadingProcess_;
  Dialogs& dialogs_;
  QPointer<QMainWindow> mainWindow_;
  std::function<void()> cancelCompression_;
  std::atomic<bool> isUploadingTerminatedByTheUser_ = false;
  QWidget* outletUploadingWindow_;
  QLabel* outletFTPAddress_;
  QLabel* outletUploadingFileName_;
  QProgressBar* outletUploadingFTPLoadingIndicator_;
  QPushButton* btnUploadingFTPCancel_;
};
