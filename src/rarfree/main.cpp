// rar-free: Quillet's stand-in for RARLAB's rar and unrar when they are not
// installed. The tools-folder adapters run it as "rar-free unrar ..." and
// "rar-free r ...". It lists, tests and extracts with the free tools of
// Debian main; writing RAR archives stays with RARLAB's rar.

#include "rarfree/CommandLine.h"
#include "rarfree/Console.h"
#include "rarfree/ExitStatus.h"
#include "rarfree/ExtractCommand.h"
#include "rarfree/FreeTool.h"
#include "rarfree/ListCommand.h"
#include "rarfree/TestCommand.h"
#include "rarfree/Texts.h"

#include <QCoreApplication>

namespace {

int usage() {
  Console::say(Texts::kUnrarBanner);
  Console::say(QString());
  Console::say(
      QStringLiteral("Usage: unrar l|t|x [-o+|-o-] [-y] [-p<password>|-p{}] <archive> [<folder>]"));
  return ExitStatus::kDone;
}

// Quillet's commands need one archive, and a folder for "x".
bool isUsable(const CommandLine& line) {
  if (!line.unknownSwitch.isEmpty()) {
    Console::sayReason(QStringLiteral("%1 %2: unknown switch %3")
                           .arg(line.program, line.command, line.unknownSwitch));
    return false;
  }
  const qsizetype mostNames = line.command == u"x" ? 2 : 1;
  if (line.names.isEmpty() || line.names.size() > mostNames) {
    Console::sayReason(QStringLiteral("%1 %2: give the archive%3 and nothing else; single "
                                      "entries are not supported")
                           .arg(line.program, line.command,
                                mostNames > 1 ? QStringLiteral(" (and a folder)") : QString()));
    return false;
  }
  return true;
}

int unrar(const CommandLine& line) {
  if (line.command.isEmpty())
    return usage();
  if (!QStringList{"l", "t", "x"}.contains(line.command)) {
    Console::sayReason(Texts::kUnrarMissing);
    return ExitStatus::kProgramMissing;
  }
  if (!isUsable(line))
    return ExitStatus::kFailed;
  if (line.command == u"l")
    return listArchive(line, {Texts::kRarBanner, true});
  if (line.command == u"t")
    return testArchive(line);
  return extractArchive(line);
}

int rar(const CommandLine& line) {
  if (line.command != u"l") {
    Console::sayReason(Texts::kRarMissing);
    return ExitStatus::kProgramMissing;
  }
  if (!isUsable(line))
    return ExitStatus::kFailed;
  return listArchive(line, {Texts::kRarBanner, false});
}

int run(const CommandLine& line) {
  if (line.program == u"unrar")
    return unrar(line);
  if (line.program == u"r")
    return rar(line);
  Console::sayReason(
      QStringLiteral("rar-free runs as \"rar-free unrar ...\" or \"rar-free r ...\""));
  return ExitStatus::kFailed;
}

QString packageOf(const QString& program) {
  return program == u"7z" ? QStringLiteral("p7zip-full") : QStringLiteral("unar");
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  try {
    return run(parseCommandLine(QCoreApplication::arguments().mid(1)));
  } catch (const MissingTool& missing) {
    Console::sayReason(QStringLiteral("rar-free: the program %1 is missing; install the Debian "
                                      "package %2.")
                           .arg(missing.program, packageOf(missing.program)));
    return ExitStatus::kProgramMissing;
  }
}
