#pragma once

#include <QDialog>

class QLineEdit;

// The small panel that asks for the password of a protected archive.
class PasswordPanel : public QDialog {
  Q_OBJECT

 public:
  explicit PasswordPanel(QWidget* parent);

  QLineEdit* passwordTextField() const { return passwordTextField_; }
  void centreAndShow();

 signals:
  void okPressed();
  void closePressed();

 private:
  QLineEdit* passwordTextField_;
};
