#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <QStringList>

#include <functional>

// One run of a command-line tool.
struct ToolRun {
  QString program;  // launch path
  QStringList arguments;
  // When set, Quillet's own current directory changes to it before the
  // launch and stays changed for later runs, as the child inherits it.
  QString directory;
  // When set, only this child runs there; Quillet's current directory is
  // left alone (jobs on worker threads use this).
  QString childDirectory;
  QByteArray input;  // bytes written to the child's standard input
  // Runs behind a Cancel button let the user's clicks through while they
  // wait; all others hold user input back until the tool has finished.
  bool acceptsUserInput = false;
  // When set, standard output goes here as it arrives instead of into the
  // result, so that it can be read while the tool is still printing.
  std::function<void(QByteArrayView)> outputSink;
};

struct ToolResult {
  bool started = true;
  bool crashed = false;
  int exitCode = 0;
  QByteArray output;
  QByteArray errors;

  // Started, ran to its end and exited 0.
  bool succeeded() const { return started && !crashed && exitCode == 0; }
  // The output as text; output that is not valid UTF-8 yields no text.
  QString text() const;
  // The last non-empty line the tool wrote to standard error.
  QString lastErrorLine() const;
};

// The one way tools are run. Every run waits for the child while keeping
// the event loop turning, so windows repaint and timers fire.
class ToolRunner {
 public:
  virtual ~ToolRunner() = default;
  virtual ToolResult run(const ToolRun& run) = 0;
  // Ends the child that is running now, from any thread.
  virtual void cancel() = 0;
};
