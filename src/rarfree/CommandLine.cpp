#include "rarfree/CommandLine.h"

namespace {

void readSwitch(const QString& argument, CommandLine& line) {
  if (argument == u"-o+") {
    line.overwrite = true;
  } else if (argument == u"-o-") {
    line.overwrite = false;
  } else if (argument.startsWith(u"-p")) {
    const QString password = argument.mid(2);
    if (password.isEmpty() || password == u"{}")
      line.password.reset();
    else
      line.password = password;
  } else if (argument != u"-y" && line.unknownSwitch.isEmpty()) {
    line.unknownSwitch = argument;
  }
}

}  // namespace

CommandLine parseCommandLine(const QStringList& arguments) {
  CommandLine line;
  line.program = arguments.value(0);
  line.command = arguments.value(1);
  for (qsizetype i = 2; i < arguments.size(); ++i) {
    const QString& argument = arguments[i];
    if (argument.startsWith(u'-') && line.names.isEmpty())
      readSwitch(argument, line);
    else
      line.names << argument;
  }
  return line;
}
