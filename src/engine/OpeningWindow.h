#pragma once

#include "engine/ArchiveEntry.h"
#include "engine/OpenedArchive.h"
#include "engine/ToolProblem.h"

// What opening and listing an archive needs from the window that shows it.
// The main window shows everything; the headless listing prints the rows.
class OpeningWindow {
 public:
  virtual ~OpeningWindow() = default;
  virtual void startSpinner() {}
  virtual void stopSpinner() {}
  // The archive's path, name, size, type and CRC32 were recorded.
  virtual void showArchive(const OpenedArchive&) {}
  virtual void noteRecentDocument(const QString&) {}
  virtual bool passwordPanelVisible() const = 0;
  virtual void showPasswordPanel() = 0;
  virtual void hidePasswordPanel() {}
  // Replaces all rows and the count of files.
  virtual void showRows(const ArchiveEntries& rows) = 0;
  virtual void reportProblem(const ToolProblem& problem) = 0;
};
