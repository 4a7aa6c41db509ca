#include "rarfree/FreeTool.h"

#include <QProcess>

#include <signal.h>
#include <sys/prctl.h>

ToolOutput runFreeTool(const QString& program, const QStringList& arguments) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  process.setProcessEnvironment(environment);
  process.setStandardInputFile(QProcess::nullDevice());
  // Quillet cancels by killing rar-free; the tool must not write on alone.
  process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
  process.start(program, arguments);
  if (!process.waitForStarted(-1))
    throw MissingTool{program};
  process.waitForFinished(-1);
  return {process.exitCode(), process.exitStatus() == QProcess::CrashExit,
          process.readAllStandardOutput(), process.readAllStandardError()};
}
