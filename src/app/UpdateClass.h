#pragma once

#include <QDeadlineTimer>
#include <QObject>
#include <QUrl>

class Desktop;
class Dialogs;
class QCheckBox;
class QDialog;
class QLabel;
class QPlainTextEdit;
class QPushButton;
class QWidget;

// The new-version check: the version on the update server against the
// installed one, and the window with both numbers, the change notes and
// the download. Fetches wait at most a few seconds, so an unreachable
// server holds nothing up for long.
class UpdateClass : public QObject {
  Q_OBJECT

 public:
  UpdateClass(Dialogs& dialogs, Desktop& desktop, QWidget* parent);

  QDialog* updateWindow() const { return updateWindow_; }
  QLabel* versionNumber() const { return versionNumber_; }
  QLabel* installedVersion() const { return installedVersion_; }
  QPlainTextEdit* textField() const { return textField_; }
  QPushButton* downloadBtn() const { return downloadBtn_; }
  QCheckBox* chkBoxAutoUpdate() const { return chkBoxAutoUpdate_; }

  // Start-up: checks unless "autoCheckForNewVersion" is "NO".
  void awakeFromNib();
  // Silent unless the server's version text differs from the installed one.
  void CheckForNewVersion();
  // The newest version's notes whatever is installed.
  void mnuLatestVersionChanges();
  void btnDownload();
  void btnClose();
  void chkAutoUpdate();

  static QUrl updateFile(const QString& name);

 signals:
  void autoCheckChanged(bool on);

 private:
  // The window with the newest version's number and notes, the latter
  // fetched within the same deadline.
  void showUpdate(const QString& newest, const QDeadlineTimer& deadline, bool offerDownload);
  void showVersions(const QString& newest);
  void showNotes(const QString& notes);

  Dialogs& dialogs_;
  Desktop& desktop_;
  QDialog* updateWindow_;
  QLabel* versionNumber_;
  QLabel* installedVersion_;
  QPlainTextEdit* textField_;
  QPushButton* downloadBtn_;
  QCheckBox* chkBoxAutoUpdate_;
};
