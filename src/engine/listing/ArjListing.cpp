#include "engine/listing/ArjListing.h"

#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/listing/EntryIcons.h"
#include "engine/listing/ToolBanner.h"

namespace {

constexpr size_t kValueTokens = 8;

bool isVersion310OrLater(const ToolBanner& banner) {
  return banner.major > 3 || (banner.major == 3 && banner.minor >= 10);
}

}  // namespace

ArjLayout arjLayoutOriginal() {
  return {{6, 3, 7}, false};
}

ArjLayout arjLayout310() {
  return {{6, 3, 7}, true};
}

ArjLayout arjLayoutFor(const OutputLines& lines) {
  return isVersion310OrLater(ToolBanner::arj(lines)) ? arjLayout310() : arjLayoutOriginal();
}

ArchiveEntries parseArjListing(const OutputLines& lines, EntryIcons& icons) {
  const ArjLayout layout = arjLayoutFor(lines);
  ArchiveEntries entries;
  const qsizetype end = layout.range.endIn(lines);
  for (qsizetype i = layout.range.firstLine; i < end && i < lines.count(); ++i) {
    const QByteArrayView nameLine = lines.at(i);
    const qsizetype threeSpaces = nameLine.indexOf("   ");
    QByteArrayView name = threeSpaces < 0 ? nameLine : nameLine.first(threeSpaces);
    if (threeSpaces < 0) {
      if (++i >= lines.count())
        break;
      if (layout.loneNameEndsInBlank && name.endsWith(' '))
        name.chop(1);
    }
    const QByteArrayView valueLine = lines.at(i);
    const auto tokens = tokensOf(valueLine);
    if (tokens.size() < kValueTokens)
      continue;
    ArchiveEntry entry;
    entry.name = QString::fromUtf8(name);
    entry.fileIcon = icons.setListViewIcon(entry.name);
    entry.crc32 = kNotShown;
    entry.dateModified = QString::fromUtf8(tokenFromEnd(tokens, 5)) + u' ' +
                         QString::fromUtf8(tokenFromEnd(tokens, 4));
    if (containsNoCase(valueLine, ".app")) {
      entry.packedSize = entry.originalSize = kNotShown;
    } else {
      entry.originalSize = SizeText::listing(PathText::intValue(tokenFromEnd(tokens, 8)));
      entry.packedSize = SizeText::listing(PathText::intValue(tokenFromEnd(tokens, 7)));
    }
    entries.append(std::move(entry));
  }
  return entries;
}
