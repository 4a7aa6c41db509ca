#pragma once

#include "platform/ToolRunner.h"

#include <QModelIndexList>

class ArchiveOpener;
class Desktop;
class Dialogs;
class PasswordPanel;
struct MainWindowUi;
struct ToolProblem;

// What the main window's operations share: the seams, the opened archive
// and the window's widgets.
struct EngineContext {
  ToolRunner& runner;
  Dialogs& dialogs;
  Desktop& desktop;
  ArchiveOpener& opener;
  const MainWindowUi& ui;
  PasswordPanel* passwordPanel;

  // Runs a tool and says what went wrong: an alert names a missing
  // program, a status-bar line tells of a failed run.
  ToolResult runReported(const ToolRun& run) const;
  // The status bar's failure line, with an alert naming a missing program.
  static void report(const MainWindowUi& ui, Dialogs& dialogs, const ToolProblem& problem,
                     const QString& details);
  QString passwordFieldText() const;
  // The selected rows of the entries table, in the table's order (not the
  // order they were clicked in), as rows of the listing itself.
  QModelIndexList selectedRows() const;
  // True, after an alert naming it, when a tool would read the name as a
  // pattern or a list file (LiteralNames); false for an empty name.
  bool refusesName(const QString& name) const;
  // True, after an alert, when one of the chosen rows' names may not be its
  // entry's own name (ListedNames).
  bool refusesListedNames(const QString& archive, const QString& passwordSwitch,
                          const QStringList& chosen) const;
};
