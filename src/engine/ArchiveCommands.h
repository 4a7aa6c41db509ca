#pragma once

#include "engine/ToolRunner.h"

#include <QString>

// The argument vectors of extracting, testing and editing an open archive,
// per archive type. Plain values: the windows run them.
namespace ArchiveCommands {

struct Archive {
  QString type;
  QString path;  // full path
};

// A name the tool would read as a switch. Files on disk become "./" + name
// (the same file); names inside an archive go after "--" instead.
QString fileArgument(const QString& name);

// Whole-archive extraction into folder; a run in the destination changes
// Quillet's folder there, the others run in the archive's folder.
ToolRun extractAll(const Archive& archive, const QString& folder, bool overwrite,
                   const QString& passwordSwitch);
// One selected entry of a zip or 7z archive; the password goes in bare, as
// "-p" + password, and not at all when there is none.
ToolRun extractEntry(const Archive& archive, const QString& entry, const QString& folder,
                     const QString& password);
ToolRun test(const Archive& archive, const QString& passwordSwitch);
ToolRun deleteEntry(const Archive& archive, const QString& entry, const QString& passwordSwitch);
// Adding runs in Quillet's current folder, where opening left it, and names
// the archive by its file name only.
ToolRun add(const Archive& archive, const QString& item);

}  // namespace ArchiveCommands
