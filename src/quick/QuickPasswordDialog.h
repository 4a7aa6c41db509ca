#pragma once

#include <QDialog>

class PathLabel;
class QLineEdit;

// Asks for the password of an archive handed over from outside. Its Cancel
// (and closing it) ends the one-shot extraction.
class QuickPasswordDialog : public QDialog {
  Q_OBJECT

 public:
  explicit QuickPasswordDialog(QWidget* parent = nullptr);

  QLineEdit* passwordTextField() const { return passwordTextField_; }
  PathLabel* passwordProtectedDroppedFileNameLabel() const { return fileNameLabel_; }

  // Names the archive, centres the dialog on its screen and brings it to
  // the front with the keyboard in the password field.
  void presentFor(const QString& archiveName);
  void reject() override { emit cancelPressed(); }

 signals:
  void okPressed();
  void cancelPressed();

 private:
  QLineEdit* passwordTextField_;
  PathLabel* fileNameLabel_;
};
