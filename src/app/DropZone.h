#pragma once

#include <QDockWidget>

class Dialogs;
class QIcon;
class QLabel;

// The side panel that files can be dragged onto while a new archive is
// being put together. It takes any drag that offers a copy, and only
// records the dropped paths under "droppedFiles"; the selection list picks
// them up from there.
class DropZone : public QDockWidget {
  Q_OBJECT

 public:
  DropZone(Dialogs& dialogs, QWidget* parent = nullptr);

  // The picture in the middle of the zone.
  void setBGImage(const QIcon& image);

 protected:
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  void setHighlighted(bool highlighted);

  Dialogs& dialogs_;
  QWidget* area_;
  QLabel* imageLabel_;
};
