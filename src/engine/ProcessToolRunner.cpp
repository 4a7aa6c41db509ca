#include "engine/ProcessToolRunner.h"

#include <QDir>
#include <QEventLoop>
#include <QMutexLocker>
#include <QProcessEnvironment>

namespace {

QProcessEnvironment toolEnvironment() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  return environment;
}

}  // namespace

ToolResult ProcessToolRunner::run(const ToolRun& run) {
  if (!run.directory.isEmpty())
    QDir::setCurrent(run.directory);

  QProcess process;
  process.setProgram(run.program);
  process.setArguments(run.arguments);
  process.setProcessEnvironment(toolEnvironment());
  process.setWorkingDirectory(run.childDirectory.isEmpty() ? QDir::currentPath()
                                                           : run.childDirectory);

  ToolResult result;
  QEventLoop loop;
  QObject::connect(&process, &QProcess::readyReadStandardOutput, &loop,
                   [&] { result.output += process.readAllStandardOutput(); });
  QObject::connect(&process, &QProcess::readyReadStandardError, &loop,
                   [&] { result.errors += process.readAllStandardError(); });
  QObject::connect(&process, &QProcess::finished, &loop, &QEventLoop::quit);
  QObject::connect(&process, &QProcess::errorOccurred, &loop, [&](QProcess::ProcessError error) {
    if (error == QProcess::FailedToStart)
      loop.quit();
  });

  {
    QMutexLocker lock(&mutex_);
    current_ = &process;
  }
  process.start();
  if (process.waitForStarted(-1)) {
    if (!run.input.isEmpty())
      process.write(run.input);
    process.closeWriteChannel();
    if (process.state() != QProcess::NotRunning)
      loop.exec(run.acceptsUserInput ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    result.output += process.readAllStandardOutput();
    result.errors += process.readAllStandardError();
    result.crashed = process.exitStatus() == QProcess::CrashExit;
    result.exitCode = process.exitCode();
  } else {
    result.started = false;
    result.exitCode = -1;
  }
  {
    QMutexLocker lock(&mutex_);
    current_.clear();
  }
  return result;
}

void ProcessToolRunner::cancel() {
  QMutexLocker lock(&mutex_);
  if (QProcess* process = current_.data())
    QMetaObject::invokeMethod(process, &QProcess::kill, Qt::QueuedConnection);
}
