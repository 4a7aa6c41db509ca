#pragma once

#include "engine/ArchiveEntry.h"
#include "engine/listing/FixedListing.h"

class EntryIcons;

// The listing of "arj l A". A name longer than the name column stands
// alone on its line and its values follow on the next one; arj 3.10 ends
// such a lone name with a blank, which is not part of the name.
struct ArjLayout {
  FixedRange range;
  bool loneNameEndsInBlank = false;
};

ArjLayout arjLayoutOriginal();
ArjLayout arjLayout310();
// The layout of the arj that printed the listing, by its banner.
ArjLayout arjLayoutFor(const OutputLines& lines);
// The name on a listing line: up to three blanks, or the whole line when
// the name stands alone and its values follow on the next line.
struct ArjName {
  QByteArrayView text;
  bool alone = false;
};
ArjName arjNameOn(QByteArrayView line, const ArjLayout& layout);

ArchiveEntries parseArjListing(const OutputLines& lines, EntryIcons& icons);
