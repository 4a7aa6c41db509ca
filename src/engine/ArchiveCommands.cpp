#include "engine/ArchiveCommands.h"

#include "engine/ArchiveType.h"
#include "engine/LiteralNames.h"
#include "engine/PathText.h"
#include "engine/ToolLocations.h"

#include <QFileInfo>

namespace ArchiveCommands {
namespace {

QStringList withPassword(const QStringList& leading, const QString& passwordSwitch) {
  return passwordSwitch.isEmpty() ? leading : leading + QStringList{passwordSwitch};
}

ToolRun sevenZip(const QStringList& leading, const QStringList& names,
                 const QStringList& trailing = {}) {
  return {ToolLocations::sevenZip(), LiteralNames::forSevenZip(leading, names, trailing)};
}

// GNU tar keeps an existing file instead of replacing it.
const QString kTarSkipOldFiles = QStringLiteral("--skip-old-files");
// A ':' in the archive's name does not make tar look for it on a host.
const QString kTarLocalFile = QStringLiteral("--force-local");
// arj extracts only the files that do not exist yet.
const QString kArjNewFilesOnly = QStringLiteral("-n");
// arj reads on through the volumes that follow the archive.
const QString kArjVolumes = QStringLiteral("-v");

}  // namespace

ToolRun extractAll(const Archive& archive, const ExtractionSetting& setting) {
  const QString archiveFolder = PathText::deletingLastPathComponent(archive.path);
  const QString name = LiteralNames::fileArgument(PathText::lastPathComponent(archive.path));
  const QString& type = archive.type;
  const QString& folder = setting.folder;
  ToolRun run;
  if (type == ArchiveType::Rar) {
    run = {ToolLocations::unrar(),
           {"x", setting.overwrite ? "-o+" : "-o-", "-y", setting.passwordSwitch, name, folder}};
    run.directory = archiveFolder;
  } else if (type == ArchiveType::Arj) {
    QStringList arguments = {"x", "-y"};
    if (setting.arjVolumes)
      arguments << kArjVolumes;
    run = {ToolLocations::arj(), arguments << name << folder};
    run.directory = archiveFolder;
  } else if (type == ArchiveType::Lha) {
    run = {ToolLocations::lha(), {"x", "-f", archive.path}};
    run.directory = folder;
  } else if (type == ArchiveType::Tbz2 || type == ArchiveType::Bz2) {
    run = {ToolLocations::tar(), {"xvfj", archive.path}};
    run.directory = folder;
  } else if (ArchiveType::isCompressedTar(type)) {
    run = {ToolLocations::tar(),
           {"--extract", "--no-same-owner", kTarLocalFile, "-f", archive.path}};
    run.directory = folder;
    // No question is asked and nothing is said: an existing file is kept
    // unless the user wants it replaced.
    if (!setting.overwrite)
      run.arguments << kTarSkipOldFiles;
    return run;
  } else {
    run = sevenZip({"x", setting.passwordSwitch}, {name},
                   {"-o" + folder, "-ssc", setting.overwrite ? "-aoa" : "-aos", "-y"});
    run.directory = archiveFolder;
  }
  if (setting.collides && !setting.overwrite)
    keepExistingFiles(run);
  return run;
}

void keepExistingFiles(ToolRun& run) {
  const QString tool = PathText::lastPathComponent(run.program);
  if (tool == u"tar") {
    run.arguments << kTarSkipOldFiles;
  } else if (tool == u"arj") {
    const qsizetype yes = run.arguments.indexOf(QStringLiteral("-y"));
    run.arguments.insert(yes < 0 ? 1 : yes + 1, kArjNewFilesOnly);
  } else if (tool == u"lha") {
    // Without "-f" lhasa asks about each existing file; the answer skips.
    run.arguments.removeOne(QStringLiteral("-f"));
    run.input = kLhaSkipAnswer;
  }
}

ToolRun extractEntry(const Archive& archive, const QString& entry, const QString& folder,
                     const QString& password) {
  const QString passwordSwitch = password.isEmpty() ? QString() : QStringLiteral("-p") + password;
  return sevenZip(withPassword({QStringLiteral("x")}, passwordSwitch), {archive.path, entry},
                  {"-o" + folder, QStringLiteral("-y")});
}

ToolRun test(const Archive& archive, const QString& passwordSwitch) {
  if (archive.type == ArchiveType::Rar)
    return {ToolLocations::unrar(), {QStringLiteral("t"), archive.path}};
  // Listing decompresses the whole stream and reads every header.
  if (ArchiveType::isCompressedTar(archive.type))
    return {ToolLocations::tar(),
            {QStringLiteral("--list"), kTarLocalFile, QStringLiteral("-f"), archive.path}};
  return sevenZip({QStringLiteral("t"), passwordSwitch}, {archive.path});
}

QStringList arjRecursion(const QString& item) {
  // With "-r" arj takes a file's name as a pattern for every folder below
  // it and adds same-named files the user did not choose.
  return QFileInfo(item).isFile() ? QStringList{} : QStringList{QStringLiteral("-r")};
}

QString firstArjVolume(const QString& archivePath) {
  return PathText::deletingPathExtension(archivePath) + QStringLiteral(".a01");
}

ToolRun testArjVolumes(const Archive& archive) {
  return {ToolLocations::arj(),
          {QStringLiteral("t"), QStringLiteral("-y"), kArjVolumes,
           LiteralNames::fileArgument(archive.path)}};
}

ToolRun deleteEntry(const Archive& archive, const QString& entry, const QString& passwordSwitch) {
  const QString remove = QStringLiteral("d");
  // rar and arj take a name that starts with "-" behind "--".
  const auto entryArguments = [](const QString& name) {
    return name.startsWith(u'-') ? QStringList{QStringLiteral("--"), name} : QStringList{name};
  };
  if (archive.type == ArchiveType::Rar)
    return {ToolLocations::rarCompressor(),
            QStringList{remove, passwordSwitch, archive.path} + entryArguments(entry)};
  if (archive.type == ArchiveType::Arj)
    return {ToolLocations::arj(),
            QStringList{remove, archive.path} + entryArguments(PathText::lastPathComponent(entry))};
  return sevenZip({remove, passwordSwitch}, {archive.path, entry});
}

ToolRun add(const Archive& archive, const QString& item) {
  const QString name = LiteralNames::fileArgument(PathText::lastPathComponent(archive.path));
  const QString file = LiteralNames::fileArgument(item);
  const QString& type = archive.type;
  ToolRun run;
  if (type == ArchiveType::Rar)
    run = {ToolLocations::rarCompressor(), {"a", name, file, "-ep1"}};
  else if (type == ArchiveType::Arj)
    run = {ToolLocations::arj(),
           QStringList{"a", "-y"} + arjRecursion(item) + QStringList{name, file}};
  else if (type == ArchiveType::Lha)
    run = {ToolLocations::lha(), {"a", name, file}};
  else
    run = sevenZip({QStringLiteral("a")}, {name, file});
  run.directory = PathText::deletingLastPathComponent(archive.path);
  return run;
}

ToolRun compressedTarListing(const QString& archivePath) {
  return {ToolLocations::tar(),
          {"--list", "--verbose", "--numeric-owner", "--quoting-style=escape", kTarLocalFile, "-f",
           archivePath}};
}

ToolRun technicalListing(const QString& archive, const QString& passwordSwitch) {
  return sevenZip(withPassword({QStringLiteral("l"), QStringLiteral("-slt")}, passwordSwitch),
                  {archive});
}

QString unsafeName(const Archive& archive, const QString& program, const QStringList& names) {
  return LiteralNames::firstUnsafe(program,
                                   QStringList{PathText::lastPathComponent(archive.path)} + names);
}

}  // namespace ArchiveCommands
