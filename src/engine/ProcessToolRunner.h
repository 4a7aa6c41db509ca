#pragma once

#include "engine/ToolRunner.h"

#include <QMutex>

#include <sys/types.h>

// Runs tools as child processes. A helper thread reads the child's output
// with plain blocking reads and hands it over in as few pieces as the
// waiting thread asks for, so that large listings cost no per-write event;
// the waiting thread keeps its event loop turning meanwhile. Every child
// gets LC_ALL=C.UTF-8 and a standard input that ends at once.
class ProcessToolRunner : public ToolRunner {
 public:
  ProcessToolRunner();
  ToolResult run(const ToolRun& run) override;
  void cancel() override;

 private:
  QMutex mutex_;
  pid_t current_ = -1;
};
