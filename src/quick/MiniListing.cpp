#include "quick/MiniListing.h"

#include "engine/ArchiveType.h"
#include "engine/PathText.h"
#include "engine/listing/ArjListing.h"
#include "engine/listing/EntryIcons.h"
#include "engine/listing/RarListing.h"
#include "engine/listing/SltListing.h"
#include "engine/listing/ToolBanner.h"

namespace MiniListing {
namespace {

constexpr QByteArrayView kPathKey = "Path = ";
constexpr int kFirstRarWithAttributesFirst = 5;

Row rowNamed(const QString& name, EntryIcons& icons) {
  return {name, icons.setListViewIcon(name)};
}

// Application bundles show as one row: their contents are left out.
QList<Row> sltRows(const OutputLines& lines, SltType type, EntryIcons& icons) {
  QList<Row> rows;
  const std::optional<SltLayout> layout = sltLayoutFor(lines, type);
  if (!layout || layout->shape.stride <= 0)
    return rows;
  const qsizetype end = lines.count() - layout->tailLines;
  if (end < layout->minimumEnd)
    return rows;
  for (qsizetype i = layout->firstRecordLine; i < end && i < lines.count();
       i += layout->shape.stride) {
    const QByteArrayView line = lines.at(i);
    if (layout->readsOutput && !line.startsWith(kPathKey))
      break;
    if (containsNoCase(line, ".app/"))
      continue;
    rows << rowNamed(QString::fromUtf8(line.size() > kPathKey.size() ? line.sliced(kPathKey.size())
                                                                     : QByteArrayView()),
                     icons);
  }
  return rows;
}

// Before rar 5 the name comes first and ends at two blanks; the blank (or
// the "*" of an encrypted entry) in front of it stays.
QList<Row> rarRows(const OutputLines& lines, EntryIcons& icons) {
  QList<Row> rows;
  if (ToolBanner::rar(lines).major >= kFirstRarWithAttributesFirst) {
    NoEntryIcons noIcons;
    for (const ArchiveEntry& entry : parseRarListing(lines, noIcons))
      rows << rowNamed(entry.name, icons);
    return rows;
  }
  const FixedRange range = rarRange3();
  const qsizetype end = range.endIn(lines);
  for (qsizetype i = range.firstLine; i < end && i < lines.count(); ++i) {
    const QByteArrayView line = lines.at(i);
    const qsizetype twoBlanks = line.indexOf("  ");
    rows << rowNamed(QString::fromUtf8(twoBlanks < 0 ? line : line.first(twoBlanks)), icons);
  }
  return rows;
}

// A name too long for its column stands alone on its line, and its values
// take the next one.
QList<Row> arjRows(const OutputLines& lines, EntryIcons& icons) {
  QList<Row> rows;
  const ArjLayout layout = arjLayoutFor(lines);
  const qsizetype end = layout.range.endIn(lines);
  for (qsizetype i = layout.range.firstLine; i < end && i < lines.count(); ++i) {
    const ArjName name = arjNameOn(lines.at(i), layout);
    if (name.alone)
      ++i;
    rows << rowNamed(QString::fromUtf8(name.text), icons);
  }
  return rows;
}

// The whole path is the row's name; its icon goes by the last component.
QList<Row> lhaRows(const OutputLines& lines, LhaVersion version, EntryIcons& icons) {
  QList<Row> rows;
  const qsizetype end = lhaRange().endIn(lines);
  for (qsizetype i = lhaRange().firstLine; i < end && i < lines.count(); ++i) {
    const QByteArrayView line = lines.at(i);
    const qsizetype start = lhaNameStart(line, version);
    const QString path = start < line.size() ? QString::fromUtf8(line.sliced(start)) : QString();
    rows << Row{path, icons.setListViewIcon(PathText::lastPathComponent(path))};
  }
  return rows;
}

}  // namespace

QList<Row> rows(const QString& type, const OutputLines& lines, LhaVersion lhaVersion,
                EntryIcons& icons) {
  if (type == ArchiveType::Rar)
    return rarRows(lines, icons);
  if (type == ArchiveType::Arj)
    return arjRows(lines, icons);
  if (type == ArchiveType::Lha)
    return lhaRows(lines, lhaVersion, icons);
  if (type == ArchiveType::Zip)
    return sltRows(lines, SltType::Zip, icons);
  if (type == ArchiveType::Tar)
    return sltRows(lines, SltType::Tar, icons);
  if (type == ArchiveType::SevenZip)
    return sltRows(lines, SltType::SevenZip, icons);
  return {};
}

}  // namespace MiniListing
