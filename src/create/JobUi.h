#pragma once

#include <QString>

struct CreatedArchives;

// What the compression job needs from the windows. The job runs on a worker
// thread; the implementation carries every call over to the GUI thread, and
// the calls that ask the user wait for the answer.
class JobUi {
 public:
  virtual ~JobUi() = default;
  virtual void orderOutCreateWindow() = 0;
  virtual void setCompressionSpinning(bool spinning) = 0;
  virtual void setCompressingArchiveName(const QString& name) = 0;
  // Centres and shows the progress window and starts its progress bar.
  virtual void showCompressingWindow() = 0;
  // Stops the progress bar, orders the window out, makes the bar
  // determinate again and resets the status to "Compressing...".
  virtual void hideCompressingWindow() = 0;
  virtual void setProgressRange(int maximum, int value) = 0;
  virtual void setProgressValue(int value) = 0;
  virtual void setProgressIndeterminate() = 0;
  virtual void setStatus(const QString& status) = 0;
  virtual void setFileContent(const QString& text) = 0;
  virtual void selectRow(int row) = 0;
  // Orders the options window out when visible, in when hidden.
  virtual void toggleCreateWindow() = 0;
  virtual void bringCreateWindowForwardIfHidden() = 0;
  virtual void alert(const QString& title, const QString& message) = 0;
  // The folder to create the archives in; empty when cancelled.
  virtual QString chooseArchivesFolder() = 0;
  // The archive's name is relative to the job's folder.
  virtual void uploadFileToFTP(const QString& archiveName, const QString& folder) = 0;
  // One status-bar line saying what failed, with the tool's whole error
  // output behind it.
  virtual void reportFailure(const QString& message, const QString& details) = 0;
  // What a job that ran to its end without a failure made.
  virtual void reportCreated(const CreatedArchives& archives) = 0;
};
