#pragma once

#include "engine/ArchiveEntry.h"
#include "engine/listing/FixedListing.h"

class EntryIcons;
class ToolRunner;

// The listing of "lha v A". LHa for UNIX 1.14i counts its columns from the
// front and puts the name at character 70. lhasa prints the same ruler but
// shows "[generic]" or "[MS-DOS]" in place of permissions and ids for
// archives from other hosts (one token instead of two), and a size wider
// than its column moves the name, so its layout counts per line.
enum class LhaVersion { LhaForUnix114, Lhasa };

// The version behind the lha tool, from what it prints when run bare.
LhaVersion lhaVersionFromUsage(const QByteArray& usage);
// Runs the lha tool bare and tells its version by what it prints.
LhaVersion probeLhaVersion(ToolRunner& runner);

FixedRange lhaRange();
// Where the name starts on an entry line: character 70 for LHa for UNIX,
// after the time stamp for lhasa (character 70 when the line has none).
qsizetype lhaNameStart(QByteArrayView line, LhaVersion version);
ArchiveEntries parseLhaListing(const OutputLines& lines, LhaVersion version, EntryIcons& icons);
