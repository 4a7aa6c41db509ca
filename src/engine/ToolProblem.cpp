#include "engine/ToolProblem.h"

#include "engine/PathText.h"
#include "engine/ToolLocations.h"

#include <QHash>
#include <QList>

namespace {

// The status a tools-folder adapter exits with when its program is missing.
constexpr int kAdapterProgramMissing = 127;

QString lastLine(const QByteArray& bytes) {
  const QList<QByteArray> lines = bytes.trimmed().split('\n');
  return QString::fromUtf8(lines.isEmpty() ? QByteArray() : lines.last().trimmed());
}

}  // namespace

QString packageProviding(const QString& program) {
  static const QHash<QString, QString> packages = {
      {"7za", "p7zip-full"},
      {"7z", "p7zip-full"},
      {"arj", "arj"},
      {"lha", "lhasa and jlha-utils"},
      {"unrar", "RARLAB's unrar (Debian non-free package unrar)"},
      {"r", "RARLAB's rar (Debian non-free package rar)"},
      {"tar", "tar"},
      {"du", "coreutils"},
      {"md5sum", "coreutils"},
      {"curl", "curl"},
      {"xdg-open", "xdg-utils"},
      {"xdg-mime", "xdg-utils"},
      {"sendmail", "a mail transfer agent such as postfix"},
  };
  return packages.value(PathText::lastPathComponent(program), QStringLiteral("its package"));
}

std::optional<ToolProblem> ToolProblem::of(const ToolRun& run, const ToolResult& result) {
  const QString name = PathText::lastPathComponent(run.program);
  if (!result.started) {
    return ToolProblem{Kind::MissingProgram,
                       QStringLiteral("Quillet cannot start the program %1 (%2). Install %3.")
                           .arg(name, run.program, packageProviding(run.program))};
  }
  if (result.exitCode == kAdapterProgramMissing && ToolLocations::isInToolsFolder(run.program)) {
    QString said = lastLine(result.errors);
    if (said.isEmpty())
      said = lastLine(result.output);
    if (said.isEmpty())
      said = QStringLiteral("%1: a program it needs is missing; install %2.")
                 .arg(name, packageProviding(run.program));
    return ToolProblem{Kind::MissingProgram, said};
  }
  if (result.crashed || result.exitCode != 0) {
    const QString command = run.arguments.value(0);
    QString message = result.crashed ? QStringLiteral("%1 %2 stopped abnormally").arg(name, command)
                                     : QStringLiteral("%1 %2 failed with exit status %3")
                                           .arg(name, command)
                                           .arg(result.exitCode);
    const QString detail = result.lastErrorLine();
    if (!detail.isEmpty())
      message += QStringLiteral(": ") + detail;
    return ToolProblem{Kind::Failed, message};
  }
  return std::nullopt;
}

ToolProblem ToolProblem::namesNotUtf8(const ToolRun& run) {
  return {Kind::NamesNotUtf8,
          QStringLiteral("The names in this archive are not UTF-8; %1 printed them in another "
                         "encoding, so nothing is listed.")
              .arg(PathText::lastPathComponent(run.program))};
}
