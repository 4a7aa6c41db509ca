#include "engine/listing/LhaListing.h"

#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/ToolLocations.h"
#include "engine/listing/EntryIcons.h"
#include "platform/ToolRunner.h"

namespace {

constexpr qsizetype kNameColumn = 70;
constexpr size_t kValueTokens = 10;

struct Columns {
  size_t packed = 2, size = 3, crc = 6, month = 7, day = 8, yearOrTime = 9;

  void shiftBy(int shift) {
    for (size_t* column : {&packed, &size, &crc, &month, &day, &yearOrTime})
      *column = static_cast<size_t>(static_cast<int>(*column) + shift);
  }
};

// lhasa shows one token for the host where Unix archives have two.
Columns columnsOf(const std::vector<QByteArrayView>& tokens, LhaVersion version) {
  Columns columns;
  const bool hostInBrackets = !tokens.empty() && tokens[0].startsWith('[');
  if (version == LhaVersion::Lhasa && hostInBrackets)
    columns.shiftBy(-1);
  return columns;
}

qsizetype nameStartOf(QByteArrayView line, const std::vector<QByteArrayView>& tokens,
                      const Columns& columns, LhaVersion version) {
  if (version != LhaVersion::Lhasa || tokens.size() <= columns.yearOrTime)
    return kNameColumn;
  const QByteArrayView stampEnd = tokens[columns.yearOrTime];
  return (stampEnd.data() - line.data()) + stampEnd.size() + 1;
}

}  // namespace

LhaVersion lhaVersionFromUsage(const QByteArray& usage) {
  return usage.contains("LHa for UNIX") ? LhaVersion::LhaForUnix114 : LhaVersion::Lhasa;
}

FixedRange lhaRange() {
  return {2, 3, 3};
}

qsizetype lhaNameStart(QByteArrayView line, LhaVersion version) {
  const auto tokens = tokensOf(line);
  return nameStartOf(line, tokens, columnsOf(tokens, version), version);
}

ArchiveEntries parseLhaListing(const OutputLines& lines, LhaVersion version, EntryIcons& icons) {
  ArchiveEntries entries;
  const qsizetype end = lhaRange().endIn(lines);
  for (qsizetype i = lhaRange().firstLine; i < end && i < lines.count(); ++i) {
    const QByteArrayView line = lines.at(i);
    const auto tokens = tokensOf(line);
    const Columns columns = columnsOf(tokens, version);
    if (tokens.size() <= columns.yearOrTime)
      continue;

    const qsizetype nameStart = nameStartOf(line, tokens, columns, version);
    const QString path =
        nameStart < line.size() ? QString::fromUtf8(line.sliced(nameStart)) : QString();

    ArchiveEntry entry;
    entry.name = PathText::lastPathComponent(path);
    entry.fileIcon = icons.setListViewIcon(entry.name);
    entry.dateModified = QString::fromUtf8(tokens[columns.month]) + u'.' +
                         QString::fromUtf8(tokens[columns.day]) + u' ' +
                         QString::fromUtf8(tokens[columns.yearOrTime]);
    if (containsNoCase(line, ".app")) {
      entry.crc32 = entry.packedSize = entry.originalSize = kNotShown;
    } else {
      entry.originalSize = SizeText::listing(PathText::intValue(tokens[columns.size]));
      entry.packedSize = SizeText::listing(PathText::intValue(tokens[columns.packed]));
      entry.crc32 = QString::fromUtf8(tokens[columns.crc]);
    }
    entries.append(std::move(entry));
  }
  return entries;
}

LhaVersion probeLhaVersion(ToolRunner& runner) {
  const ToolResult usage = runner.run({ToolLocations::lha(), {}});
  return lhaVersionFromUsage(usage.output + usage.errors);
}
