#pragma once

#include <QObject>

class QCheckBox;
class QDialog;
class QLineEdit;
class QPlainTextEdit;
class QWidget;

// The e-mail settings window: where the notice after an upload goes, its
// subject and message, and whether the link and the time are added.
class ClassEmail : public QObject {
  Q_OBJECT

 public:
  explicit ClassEmail(QWidget* parent);

  QDialog* mailSettingsWindow() const { return mailSettingsWindow_; }
  QLineEdit* fieldTo() const { return fieldTo_; }
  QLineEdit* fieldSubject() const { return fieldSubject_; }
  QPlainTextEdit* fieldMessage() const { return fieldMessage_; }
  QCheckBox* chkAttachLinkOutlet() const { return chkAttachLinkOutlet_; }
  QCheckBox* chkIncludeDateOutlet() const { return chkIncludeDateOutlet_; }

  void btnOpenEmailSettings();
  void btnSave();
  void btnCancel();

 private:
  QDialog* mailSettingsWindow_;
  QLineEdit* fieldTo_;
  QLineEdit* fieldSubject_;
  QPlainTextEdit* fieldMessage_;
  QCheckBox* chkAttachLinkOutlet_;
  QCheckBox* chkIncludeDateOutlet_;
};
