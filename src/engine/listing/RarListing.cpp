#include "engine/listing/RarListing.h"

#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/listing/EntryIcons.h"
#include "engine/listing/ToolBanner.h"

#include <QRegularExpression>

namespace {

constexpr int kFirstVersionWithAttributesFirst = 5;
constexpr size_t kValueTokens = 9;

QString sizeOf(QByteArrayView digits) {
  return SizeText::listing(PathText::intValue(digits));
}

QString joined(QByteArrayView date, QByteArrayView time) {
  return QString::fromUtf8(date) + u' ' + QString::fromUtf8(time);
}

ArchiveEntries parseVersion3(const OutputLines& lines, EntryIcons& icons) {
  ArchiveEntries entries;
  const qsizetype end = rarRange3().endIn(lines);
  for (qsizetype i = rarRange3().firstLine; i < end && i < lines.count(); ++i) {
    const QByteArrayView line = lines.at(i);
    const auto tokens = tokensOf(line);
    if (tokens.size() < kValueTokens)
      continue;
    const qsizetype twoSpaces = line.indexOf("  ");
    const QByteArrayView firstPiece = twoSpaces < 0 ? line : line.first(twoSpaces);
    ArchiveEntry entry;
    entry.name = QString::fromUtf8(firstPiece.size() > 1 ? firstPiece.sliced(1) : QByteArrayView());
    entry.fileIcon = icons.setListViewIcon(QString::fromUtf8(firstPiece));
    entry.dateModified = joined(tokenFromEnd(tokens, 6), tokenFromEnd(tokens, 5));
    if (containsNoCase(line, ".app")) {
      entry.crc32 = entry.packedSize = entry.originalSize = kNotShown;
    } else {
      entry.originalSize = sizeOf(tokenFromEnd(tokens, 9));
      entry.packedSize = sizeOf(tokenFromEnd(tokens, 8));
      entry.crc32 = QString::fromUtf8(tokenFromEnd(tokens, 3));
    }
    entries.append(std::move(entry));
  }
  return entries;
}

bool isRuler(QByteArrayView line) {
  return line.startsWith("-----------");
}

bool isDate(QByteArrayView token) {
  static const QRegularExpression pattern(QStringLiteral(R"(^\d\d(\d\d)?-\d\d-\d\d$)"));
  return pattern.match(QString::fromLatin1(token)).hasMatch();
}

// "  ..A....     24576  2019-11-17 15:59  name": the date is found by its
// form, so a size wider than its column moves nothing.
ArchiveEntries parseVersion5(const OutputLines& lines, EntryIcons& icons) {
  ArchiveEntries entries;
  qsizetype i = 0;
  while (i < lines.count() && !isRuler(lines.at(i)))
    ++i;
  for (++i; i < lines.count() && !isRuler(lines.at(i)); ++i) {
    const QByteArrayView line = lines.at(i);
    const auto tokens = tokensOf(line);
    size_t date = 1;
    while (date + 1 < tokens.size() && !isDate(tokens[date]))
      ++date;
    if (date + 1 >= tokens.size())
      continue;
    const QByteArrayView time = tokens[date + 1];
    const qsizetype nameStart = (time.data() - line.data()) + time.size() + 2;
    ArchiveEntry entry;
    entry.name =
        nameStart < line.size() ? QString::fromUtf8(line.sliced(nameStart)).trimmed() : QString();
    entry.fileIcon = icons.setListViewIcon(entry.name);
    entry.dateModified = joined(tokens[date], time);
    entry.crc32 = entry.packedSize = kNotShown;
    entry.originalSize = containsNoCase(line, ".app") ? kNotShown : sizeOf(tokens[date - 1]);
    entries.append(std::move(entry));
  }
  return entries;
}

}  // namespace

FixedRange rarRange3() {
  return {8, 4, 9};
}

ArchiveEntries parseRarListing(const OutputLines& lines, EntryIcons& icons) {
  if (ToolBanner::rar(lines).major >= kFirstVersionWithAttributesFirst)
    return parseVersion5(lines, icons);
  return parseVersion3(lines, icons);
}
