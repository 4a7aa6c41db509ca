#pragma once

#include <QString>
#include <QStringList>

class QWidget;

// Alerts and file panels, behind one seam so that flows can be tested with
// scripted answers.
class Dialogs {
 public:
  struct OpenPanel {
    QString title;
    QString startFolder;
    QStringList extensions;  // empty: any file
    bool chooseFiles = true;
    bool chooseFolders = false;
    bool multipleSelection = false;
    bool canCreateFolders = false;

    // Files and folders, several at once.
    static OpenPanel filesAndFolders(const QString& title) {
      OpenPanel panel;
      panel.title = title;
      panel.chooseFolders = true;
      panel.multipleSelection = true;
      return panel;
    }

    // One folder, which may be made in the panel.
    static OpenPanel folder(const QString& title) {
      OpenPanel panel;
      panel.title = title;
      panel.chooseFiles = false;
      panel.chooseFolders = true;
      panel.canCreateFolders = true;
      return panel;
    }
  };
  struct SavePanel {
    QString title;
    QString startFolder;
    QString fileName;
  };

  virtual ~Dialogs() = default;
  // A modal alert with a title, a message and one button.
  virtual void alert(const QString& title, const QString& message, const QString& button) = 0;
  // An alert bringing good news, shown with an information icon instead of
  // a warning.
  virtual void notify(const QString& title, const QString& message, const QString& button) {
    alert(title, message, button);
  }
  // A question with the given answer and Cancel; true for the answer.
  virtual bool ask(const QString& title, const QString& message, const QString& answer) = 0;
  // The chosen paths; empty when the panel was cancelled.
  virtual QStringList chooseToOpen(QWidget* parent, const OpenPanel& panel) = 0;
  // The chosen path; empty when the panel was cancelled.
  virtual QString chooseToSave(QWidget* parent, const SavePanel& panel) = 0;
};
