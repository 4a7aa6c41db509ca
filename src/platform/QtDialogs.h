#pragma once

#include "platform/Dialogs.h"

// Dialogs as QMessageBox and QFileDialog. Without a display nobody could
// answer them: alerts then go to standard error and panels are cancelled,
// so that a run started without one still ends.
class QtDialogs : public Dialogs {
 public:
  explicit QtDialogs(bool unattended = false) : unattended_(unattended) {}

  // Whether the platform has no screen a person looks at.
  static bool platformIsUnattended();

  void alert(const QString& title, const QString& message, const QString& button) override;
  void notify(const QString& title, const QString& message, const QString& button) override;
  bool ask(const QString& title, const QString& message, const QString& answer) override;
  QStringList chooseToOpen(QWidget* parent, const OpenPanel& panel) override;
  QString chooseToSave(QWidget* parent, const SavePanel& panel) override;

 private:
  // icon is a QMessageBox::Icon.
  void show(int icon, const QString& title, const QString& message, const QString& button);

  bool unattended_;
};
