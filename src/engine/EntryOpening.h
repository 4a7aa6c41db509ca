#pragma once

#include "engine/EngineContext.h"

#include <QObject>
#include <QTemporaryDir>

#include <memory>

class QAction;
class QMenu;

// Opening an entry with the desktop's default application, from a
// double-click, Enter or the rows' context menu. The entry is extracted
// alone into Quillet's own temporary folder, never into the user's
// folders, with the password the open archive was given.
class EntryOpening : public QObject {
  Q_OBJECT

 public:
  explicit EntryOpening(const EngineContext& context, QObject* parent = nullptr);

  // Opens the row of the listing (not of the table's view); folders stay.
  void openEntry(int row);
  // Extracts the listing's rows into a new folder of Quillet's temporary
  // folder; their paths, or nothing after the status bar has said why.
  QStringList extractToTemporary(const QList<int>& rows);
  QAction* openEntryAction() const { return openEntryAction_; }
  QMenu* contextMenu() const { return contextMenu_; }

 private:
  void openCurrent();
  void showContextMenu(const QPoint& position);

  EngineContext context_;
  QAction* openEntryAction_;
  QMenu* contextMenu_;
  // Removed when Quillet ends; what was opened stays readable until then.
  std::unique_ptr<QTemporaryDir> folder_;
};
