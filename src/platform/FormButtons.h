#pragma once

#include <QDialogButtonBox>
#include <QPushButton>
#include <QWidget>

// Buttons inside a dialog's form (FTP Settings…, Test Login, Choose…) act on
// a click or Space only: Enter keeps meaning the dialog's own answer even
// while one of them has the focus. Call once the dialog holds its buttons.
inline void keepEnterForTheAnswers(QWidget* dialog) {
  for (QPushButton* button : dialog->findChildren<QPushButton*>()) {
    if (!qobject_cast<QDialogButtonBox*>(button->parentWidget()))
      button->setAutoDefault(false);
  }
}
