#include "engine/ArchiveCommands.h"

#include "engine/ArchiveType.h"
#include "engine/PathText.h"
#include "engine/ToolLocations.h"

namespace ArchiveCommands {
namespace {

const QString kEndOfSwitches = QStringLiteral("--");

// Entry names after the switches, behind "--" when one starts with "-".
QStringList entryArguments(const QString& entry) {
  if (entry.startsWith(u'-'))
    return {kEndOfSwitches, entry};
  return {entry};
}

}  // namespace

QString fileArgument(const QString& name) {
  return name.startsWith(u'-') ? QStringLiteral("./") + name : name;
}

ToolRun extractAll(const Archive& archive, const QString& folder, bool overwrite,
                   const QString& passwordSwitch) {
  const QString archiveFolder = PathText::deletingLastPathComponent(archive.path);
  const QString name = fileArgument(PathText::lastPathComponent(archive.path));
  const QString& type = archive.type;
  ToolRun run;
  if (type == ArchiveType::Rar) {
    run = {ToolLocations::unrar(),
           {"x", overwrite ? "-o+" : "-o-", "-y", passwordSwitch, name, folder}};
    run.directory = archiveFolder;
  } else if (type == ArchiveType::Arj) {
    run = {ToolLocations::arj(), {"x", "-y", name, folder}};
    run.directory = archiveFolder;
  } else if (type == ArchiveType::Lha) {
    run = {ToolLocations::lha(), {"x", "-f", archive.path}};
    run.directory = folder;
  } else if (type == ArchiveType::Tbz2 || type == ArchiveType::Bz2) {
    run = {QStringLiteral("/usr/bin/tar"), {"xvfj", archive.path}};
    run.directory = folder;
  } else {
    run = {ToolLocations::sevenZip(),
           {"x", passwordSwitch, name, "-o" + folder, "-ssc", overwrite ? "-aoa" : "-aos", "-y"}};
    run.directory = archiveFolder;
  }
  return run;
}

ToolRun extractEntry(const Archive& archive, const QString& entry, const QString& folder,
                     const QString& password) {
  QStringList arguments = {QStringLiteral("x")};
  if (!password.isEmpty())
    arguments << QStringLiteral("-p") + password;
  arguments << archive.path;
  if (entry.startsWith(u'-'))
    arguments << "-o" + folder << QStringLiteral("-y") << entryArguments(entry);
  else
    arguments << entry << "-o" + folder << QStringLiteral("-y");
  return {ToolLocations::sevenZip(), arguments};
}

ToolRun test(const Archive& archive, const QString& passwordSwitch) {
  if (archive.type == ArchiveType::Rar)
    return {ToolLocations::unrar(), {QStringLiteral("t"), archive.path}};
  return {ToolLocations::sevenZip(), {QStringLiteral("t"), passwordSwitch, archive.path}};
}

ToolRun deleteEntry(const Archive& archive, const QString& entry, const QString& passwordSwitch) {
  const QString remove = QStringLiteral("d");
  if (archive.type == ArchiveType::Rar)
    return {ToolLocations::rarCompressor(),
            QStringList{remove, passwordSwitch, archive.path} + entryArguments(entry)};
  if (archive.type == ArchiveType::Arj)
    return {ToolLocations::arj(),
            QStringList{remove, archive.path} + entryArguments(PathText::lastPathComponent(entry))};
  return {ToolLocations::sevenZip(),
          QStringList{remove, passwordSwitch, archive.path} + entryArguments(entry)};
}

ToolRun add(const Archive& archive, const QString& item) {
  const QString name = fileArgument(PathText::lastPathComponent(archive.path));
  const QString file = fileArgument(item);
  const QString& type = archive.type;
  if (type == ArchiveType::Rar)
    return {ToolLocations::rarCompressor(), {"a", name, file, "-ep1"}};
  if (type == ArchiveType::Arj)
    return {ToolLocations::arj(), {"a", "-y", "-r", name, file}};
  if (type == ArchiveType::Lha)
    return {ToolLocations::lha(), {"a", name, file}};
  return {ToolLocations::sevenZip(), {"a", name, file}};
}

}  // namespace ArchiveCommands
