#pragma once

#include "platform/ToolRunner.h"

#include <QMutex>

#include <sys/types.h>
#include <memory>

// Runs tools as child processes. A helper thread reads the child's output
// with plain blocking reads and hands it over in as few pieces as the
// waiting thread asks for, so that large listings cost no per-write event;
// the waiting thread keeps its event loop turning meanwhile. Every child
// gets LC_ALL=C.UTF-8 and a standard input that ends at once.
class ProcessToolRunner : public ToolRunner {
 public:
  ProcessToolRunner();
  ToolResult run(const ToolRun& run) override;
  // Asks the running tool to stop (so 7-Zip can remove its temporary
  // files) and ends it for good if it is still there a moment later.
  void cancel() override;

 private:
  struct Running {
    QMutex mutex;
    pid_t pid = -1;
  };
  void setRunning(pid_t pid);

  // Shared with the thread that may end the tool after a cancel.
  std::shared_ptr<Running> running_ = std::make_shared<Running>();
};
