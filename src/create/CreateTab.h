#pragma once

#include <QWidget>

class CreateArchiveListView;
class Desktop;
class Dialogs;
class QCheckBox;
class QPushButton;
class ToolRunner;

// The create-archive tab: the items of the new archive and the button that
// makes it.
class CreateTab : public QWidget {
  Q_OBJECT

 public:
  CreateTab(ToolRunner& runner, Dialogs& dialogs, Desktop& desktop, QWidget* parent = nullptr);

  CreateArchiveListView* list() const { return list_; }
  QCheckBox* chkEveryItemNewArchive() const { return chkEveryItemNewArchive_; }
  QPushButton* btnCreateAction() const { return btnCreateAction_; }

 private:
  CreateArchiveListView* list_;
  QCheckBox* chkEveryItemNewArchive_;
  QPushButton* btnCreateAction_;
};
