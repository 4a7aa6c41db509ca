#include "engine/listing/TarListing.h"

#include "engine/ArchiveContents.h"
#include "engine/SizeText.h"
#include "engine/listing/EntryIcons.h"

#include <algorithm>
#include <limits>

ArchiveEntries parseTarListing(const QByteArray& listing, EntryIcons& icons) {
  ArchiveEntries rows;
  for (const ContentEntry& content : ArchiveContents::fromTarListing(listing).entries) {
    ArchiveEntry row;
    row.name = content.path;
    row.fileIcon = icons.setListViewIcon(row.name);
    row.packedSize = row.crc32 = kNotShown;
    row.originalSize = content.folder ? kNotShown
                                      : SizeText::listing(static_cast<int>(std::min<qint64>(
                                            content.size, std::numeric_limits<int>::max())));
    row.dateModified = content.modified;
    rows << row;
  }
  return rows;
}
