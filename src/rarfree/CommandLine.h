#pragma once

#include <QString>
#include <QStringList>

#include <optional>

// A command as Quillet hands it to RARLAB's programs:
// "unrar x -o+ -y -pPASS NAME FOLDER", "r l -p{} NAME", "unrar t NAME".
struct CommandLine {
  QString program;  // "unrar" or "r"
  QString command;  // "l", "t", "x", ...; empty for a bare run
  std::optional<QString> password;
  bool overwrite = false;  // -o+ replaces existing files, -o- (the default) keeps them
  QStringList names;       // the archive, then the destination folder
  QString unknownSwitch;

  QString archive() const { return names.value(0); }
};

// "-p{}" and a bare "-p" stand for no password.
CommandLine parseCommandLine(const QStringList& arguments);
