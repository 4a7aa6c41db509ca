#pragma once

#include "engine/ToolRunner.h"

class ArchiveOpener;
class Desktop;
class Dialogs;
class PasswordPanel;
struct MainWindowUi;

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
  QString passwordFieldText() const;
};
