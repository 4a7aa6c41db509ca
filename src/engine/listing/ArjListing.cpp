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

ArjName arjNameOn(QByteArrayView line, const ArjLayout& layout) {
  const qsizetype threeSpaces = line.indexOf("   ");
  if (threeSpaces >= 0)
    return {line.first(threeSpaces), false};
  if (layout.loneNameEndsInBlank && line.endsWith(' '))
    line.chop(1);
  return {line, true};
}

ArchiveEntries parseArjListing(const OutputLines& lines, EntryIcons& icons) {
  const ArjLayout layout = arjLayoutFor(lines);
  ArchiveEntries entries;
  const qsizetype end = layout.range.endIn(lines);
  for (qsizetype i = layout.range.firstLine; i < end && i < lines.count(); ++i) {
    const ArjName name = arjNameOn(lines.at(i), layout);
    if (name.alone && ++i >= lines.count())
      break;
    const QByteArrayView valueLine = lines.at(i);
    const auto tokens = tokensOf(valueLine);
    if (tokens.size() < kValueTokens)
      continue;
    ArchiveEntry entry;
    entry.name = QString::fromUtf8(name.text);
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
