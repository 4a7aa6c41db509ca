#pragma once

#include "engine/ArchiveEntry.h"
#include "engine/listing/FixedListing.h"

class EntryIcons;

// The listing of the rar compressor ("r l PASS A"). Versions before 5 print
// the name first and the values after it; from 5 on, "l" prints
// attributes, size, date and time before the name, and no packed size or
// CRC.
FixedRange rarRange3();
ArchiveEntries parseRarListing(const OutputLines& lines, EntryIcons& icons);
