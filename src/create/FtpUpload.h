#pragma once

#include <QString>

#include <atomic>

class ToolRunner;

// What the upload shows. It runs on the compression worker; the
// implementation carries each call over to the GUI thread and waits for
// the alerts to be answered.
class UploadUi {
 public:
  virtual ~UploadUi() = default;
  // Centres and shows the uploading window with the address and the
  // archive, and sends the main window to the taskbar.
  virtual void showUploadingWindow(const QString& address, const QString& fileName) = 0;
  virtual void setUploadingIndicator(bool running) = 0;
  virtual void alert(const QString& title, const QString& message) = 0;
  // Hides the uploading window and brings the main window back.
  virtual void finishUploading() = 0;
  // One status-bar line saying what failed.
  virtual void reportFailure(const QString& message) = 0;
};

// Uploads a new archive to the FTP server of the settings with curl, tells
// the user how it went and, when asked to, sends the e-mail notice with
// the link.
class FtpUpload {
 public:
  // The flag is set by the user's cancel and cleared once the cancel has
  // been reported.
  FtpUpload(ToolRunner& uploadingProcess, UploadUi& ui,
            std::atomic<bool>& isUploadingTerminatedByTheUser);

  // path is the archive's name relative to folder, where curl runs.
  void uploadFileToFTP(const QString& path, const QString& folder, bool sendMail);

 private:
  ToolRunner& uploadingProcess_;
  UploadUi& ui_;
  std::atomic<bool>& isUploadingTerminatedByTheUser_;
};
