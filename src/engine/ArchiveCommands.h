#pragma once

#include "platform/ToolRunner.h"

#include <QString>

// The argument vectors of extracting, testing and editing an open archive,
// per archive type. Plain values: the windows run them. Names always reach
// the tools literally (LiteralNames); the names rar and arj cannot take
// literally are refused by the callers before anything runs.
namespace ArchiveCommands {

struct Archive {
  QString type;
  QString path;  // full path
};

// What the destination and the archive's folder hold, which changes the
// whole-archive vector only where the plain one would lose data.
struct ExtractionSetting {
  QString folder;
  bool overwrite = false;
  QString passwordSwitch;
  // Overwriting is off and some entry would land on an existing file: tar,
  // arj and lha then get their own keep-or-skip switch.
  bool collides = false;
  // arj volumes (.a01, ...) lie beside the archive.
  bool arjVolumes = false;
};

// Whole-archive extraction; a run in the destination changes Quillet's
// folder there, the others run in the archive's folder.
ToolRun extractAll(const Archive& archive, const ExtractionSetting& setting);
// lhasa asks before it replaces a file; this answer skips them all.
inline constexpr char kLhaSkipAnswer[] = "s\n";
// tar, arj and lha replace existing files unless told not to: tar gets
// "--skip-old-files", arj "-n" after its "-y", lha loses "-f" and answers
// its questions with kLhaSkipAnswer. Other tools' runs stay as they are.
void keepExistingFiles(ToolRun& run);

// One selected entry of a zip or 7z archive; the password goes in bare, as
// "-p" + password, and not at all when there is none.
ToolRun extractEntry(const Archive& archive, const QString& entry, const QString& folder,
                     const QString& password);
ToolRun test(const Archive& archive, const QString& passwordSwitch);
// GNU tar's verbose listing of a tar archive compressed as a whole, in its
// escape quoting style; tar finds the compression itself.
ToolRun compressedTarListing(const QString& archivePath);
// arj's "-r" for an item: folders are added with what they hold; a file
// goes without it, which would add same-named files from the folders below.
QStringList arjRecursion(const QString& item);

// The volume that follows an arj archive: "x.a01" beside "x.arj".
QString firstArjVolume(const QString& archivePath);
// arj's own test of every volume, which 7-Zip cannot read.
ToolRun testArjVolumes(const Archive& archive);
ToolRun deleteEntry(const Archive& archive, const QString& entry, const QString& passwordSwitch);
// Adding names the archive by its file name and runs in its folder, so that
// it is the open archive whatever folder Quillet was left in.
ToolRun add(const Archive& archive, const QString& item);

// 7-Zip's technical listing, the password switch given when not empty.
ToolRun technicalListing(const QString& archive, const QString& passwordSwitch);

// The first name of a run's names that its tool would read as a pattern or
// a list file; empty when every name is safe.
QString unsafeName(const Archive& archive, const QString& program, const QStringList& names);

}  // namespace ArchiveCommands
