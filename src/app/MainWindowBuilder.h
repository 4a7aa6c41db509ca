#pragma once

#include "app/ShellActions.h"
#include "engine/MainWindowUi.h"

class CreateTab;
class Dialogs;

// Builds the main window: the archive tab, the create tab given, the
// menus (the shell's own actions into shell), the toolbar and the side
// panels.
MainWindowUi buildMainWindow(Dialogs& dialogs, CreateTab* createTab, ShellActions& shell);
