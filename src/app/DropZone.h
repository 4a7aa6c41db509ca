#pragma once

#include <QDockWidget>

class Dialogs;

// The side panel that files can be dragged onto while a new archive is
// being put together. It only records the dropped paths under
// "droppedFiles"; the selection list picks them up from there.
class DropZone : public QDockWidget {
  Q_OBJECT

 public:
  DropZone(Dialogs& dialogs, QWidget* parent = nullptr);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void setHighlighted(bool highlighted);

  Dialogs& dialogs_;
  QWidget* area_;
};
