#pragma once

#include "platform/ToolRunner.h"

#include <QObject>

class Dialogs;
class QDialog;
class QLineEdit;
class QProgressBar;
class QWidget;

// The FTP settings window: the server address, user name and password the
// upload uses, a login test and the creation of a folder on the server.
class classFTP : public QObject {
  Q_OBJECT

 public:
  classFTP(ToolRunner& runner, Dialogs& dialogs, QWidget* parent);

  QDialog* ftpSettingsWindow() const { return ftpSettingsWindow_; }
  QLineEdit* ftpAddressBox() const { return ftpAddressBox_; }
  QLineEdit* ftpUserNameBox() const { return ftpUserNameBox_; }
  QLineEdit* ftpPasswordBox() const { return ftpPasswordBox_; }
  QDialog* newDirWindow() const { return newDirWindow_; }
  QLineEdit* newDirTextBox() const { return newDirTextBox_; }

  // From the create window and from the preferences: the stored settings
  // in a window of their own, unless it is up already.
  void btnFTPSettings();
  void btnPreferencesFTPSettings();
  void btnSave();
  void btnCancel();
  void btnTest();
  void btnCreateFTPDirectory();
  void btnCreateDir();
  void btnCancelCreateDir();

 private:
  void buildSettingsWindow();
  void buildNewDirWindow();
  // False, after telling the user, when a field the server needs is empty.
  bool fieldsFilled();
  // Runs curl with the indicator turning; false when it could not start.
  bool runCurl(const ToolRun& run, QByteArray& errors);

  ToolRunner& runner_;
  Dialogs& dialogs_;
  QDialog* ftpSettingsWindow_;
  QLineEdit* ftpAddressBox_;
  QLineEdit* ftpUserNameBox_;
  QLineEdit* ftpPasswordBox_;
  QProgressBar* ftpTestLoadingIndicator_;
  QDialog* newDirWindow_;
  QLineEdit* newDirTextBox_;
};
