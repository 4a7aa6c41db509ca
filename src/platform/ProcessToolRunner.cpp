#include "platform/ProcessToolRunner.h"

#include "platform/ChildProcess.h"

#include <QDir>
#include <QEventLoop>
#include <QMutexLocker>

#include <chrono>
#include <csignal>
#include <thread>

namespace {

constexpr std::chrono::seconds kGraceBeforeKill{3};

// Output read by the helper thread, waiting for the thread that runs the
// tool. Only one hand-over is queued at a time, however much arrives.
class OutputHandOver {
 public:
  explicit OutputHandOver(QObject* receiver) : receiver_(receiver) {}

  template <typename Take>
  void add(const char* data, qsizetype size, Take take) {
    QMutexLocker lock(&mutex_);
    pending_.append(data, size);
    if (queued_)
      return;
    queued_ = true;
    QMetaObject::invokeMethod(receiver_, take, Qt::QueuedConnection);
  }

  QByteArray take() {
    QMutexLocker lock(&mutex_);
    queued_ = false;
    return std::exchange(pending_, QByteArray());
  }

 private:
  QObject* receiver_;
  QMutex mutex_;
  QByteArray pending_;
  bool queued_ = false;
};

}  // namespace

ProcessToolRunner::ProcessToolRunner() {
  // A tool that exits before reading its input must not end Quillet.
  std::signal(SIGPIPE, SIG_IGN);
}

ToolResult ProcessToolRunner::run(const ToolRun& run) {
  if (!run.directory.isEmpty())
    QDir::setCurrent(run.directory);
  const QString folder = run.childDirectory.isEmpty() ? QDir::currentPath() : run.childDirectory;

  ToolResult result;
  ChildProcess child;
  if (!child.start(run.program, run.arguments, folder)) {
    result.started = false;
    result.exitCode = -1;
    return result;
  }
  setRunning(child.pid());

  QEventLoop loop;
  QObject receiver;
  OutputHandOver output(&receiver);
  const auto deliver = [&] {
    const QByteArray chunk = output.take();
    if (chunk.isEmpty())
      return;
    if (run.outputSink)
      run.outputSink(chunk);
    else
      result.output += chunk;
  };
  QByteArray errors;
  ChildProcess::Exit exit;
  std::thread pump([&] {
    child.pump(
        run.input, [&](const char* data, qsizetype size) { output.add(data, size, deliver); },
        [&](const char* data, qsizetype size) { errors.append(data, size); });
    setRunning(-1);
    exit = child.wait();
    QMetaObject::invokeMethod(
        &receiver, [&loop] { loop.quit(); }, Qt::QueuedConnection);
  });
  loop.exec(run.acceptsUserInput ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
  pump.join();
  deliver();

  result.errors = errors;
  result.exitCode = exit.code;
  result.crashed = exit.signalled;
  return result;
}

void ProcessToolRunner::setRunning(pid_t pid) {
  QMutexLocker lock(&running_->mutex);
  running_->pid = pid;
}

void ProcessToolRunner::cancel() {
  QMutexLocker lock(&running_->mutex);
  const pid_t pid = running_->pid;
  if (pid <= 0)
    return;
  ::kill(pid, SIGTERM);
  std::thread([running = running_, pid] {
    std::this_thread::sleep_for(kGraceBeforeKill);
    QMutexLocker stillRunning(&running->mutex);
    if (running->pid == pid)
      ::kill(pid, SIGKILL);
  }).detach();
}
