#pragma once

#include "platform/Dialogs.h"

#include <QList>

// Answers panels from a script and records every alert and panel.
class FakeDialogs : public Dialogs {
 public:
  struct Alert {
    QString title;
    QString message;
    QString button;
  };

  void alert(const QString& title, const QString& message, const QString& button) override {
    alerts.append({title, message, button});
  }
  bool ask(const QString& title, const QString& message, const QString& answer) override {
    questions.append({title, message, answer});
    return !askAnswers.isEmpty() && askAnswers.takeFirst();
  }
  QStringList chooseToOpen(QWidget*, const OpenPanel& panel) override {
    openPanels.append(panel);
    return openAnswers.isEmpty() ? QStringList() : openAnswers.takeFirst();
  }
  QString chooseToSave(QWidget*, const SavePanel& panel) override {
    savePanels.append(panel);
    return saveAnswers.isEmpty() ? QString() : saveAnswers.takeFirst();
  }

  QList<Alert> alerts;
  QList<Alert> questions;
  QList<bool> askAnswers;
  QList<OpenPanel> openPanels;
  QList<SavePanel> savePanels;
  QList<QStringList> openAnswers;
  QStringList saveAnswers;
};
