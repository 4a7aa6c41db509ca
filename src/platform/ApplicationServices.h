#pragma once

#include <functional>

class Desktop;
class Dialogs;
class ToolRunner;

// What the application's controllers reach the outside through, and how
// they end the application.
struct ApplicationServices {
  ToolRunner& runner;
  Dialogs& dialogs;
  Desktop& desktop;
  // Ends the application (the event loop, and the process with it).
  std::function<void()> terminate;
  // No display: nobody can click a panel or type a password, so routes that
  // wait for that end at once.
  bool unattended = false;
};
