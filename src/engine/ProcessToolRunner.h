#pragma once

#include "engine/ToolRunner.h"

#include <QMutex>
#include <QPointer>
#include <QProcess>

// Runs tools as child processes with QProcess. Every child gets
// LC_ALL=C.UTF-8, so that tools print English and UTF-8 names, and a
// standard input that ends at once, so no tool can wait at a prompt.
class ProcessToolRunner : public ToolRunner {
 public:
  ToolResult run(const ToolRun& run) override;
  void cancel() override;

 private:
  QMutex mutex_;
  QPointer<QProcess> current_;
};
