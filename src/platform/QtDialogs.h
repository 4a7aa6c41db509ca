#pragma once

#include "platform/Dialogs.h"

// Dialogs as QMessageBox and QFileDialog.
class QtDialogs : public Dialogs {
 public:
  void alert(const QString& title, const QString& message, const QString& button) override;
  QStringList chooseToOpen(QWidget* parent, const OpenPanel& panel) override;
  QString chooseToSave(QWidget* parent, const SavePanel& panel) override;
};
