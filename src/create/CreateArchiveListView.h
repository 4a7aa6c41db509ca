#pragma once

#include "create/SelectionSizeText.h"

#include <QWidget>

class Desktop;
class Dialogs;
class QLabel;
class QProgressBar;
class QPushButton;
class QTableView;
class SelectionListModel;
class ToolRunner;
struct SelectionRow;

// The list of files and folders the next archive will contain, with the
// buttons that add to it and remove from it. Items come from the open
// panel, from addFiles() and from the drop zone, which leaves its paths
// under "droppedFiles" for a timer here to pick up.
class CreateArchiveListView : public QWidget {
  Q_OBJECT

 public:
  CreateArchiveListView(ToolRunner& runner, Dialogs& dialogs, Desktop& desktop,
                        QWidget* parent = nullptr);

  // Asks for files and folders to add.
  void btnAddContent();
  // Adds the chosen paths when returnCode is 1 (the panel was confirmed).
  void openDialogForSelection(const QStringList& sheet, int returnCode);
  // Takes over the paths the drop zone left, if any.
  void timerUpdateFileList();
  void addFiles(const QStringList& paths);

  SelectionListModel* model() const { return model_; }
  QTableView* tableView() const { return table_; }

 private:
  void buildTable();
  QLayout* buildButtonBar();
  void addPaths(const QStringList& paths, SelectionEntry entry);
  void addPathsShowingProgress(const QStringList& paths, SelectionEntry entry);
  SelectionRow rowFor(const QString& path, SelectionEntry entry);
  void removeSelectedRows();
  void updateRemoveButton();

  ToolRunner& runner_;
  Dialogs& dialogs_;
  Desktop& desktop_;
  SelectionListModel* model_;
  QTableView* table_;
  QLabel* calculatingSizesLabel_;
  QProgressBar* calculatingSizesSpin_;
  QPushButton* addButton_;
  QPushButton* removeButton_;
  // Sizing runs du, which keeps the event loop turning, so the timer can
  // fire in the middle of an addition.
  bool addingRows_ = false;
};
