#include "engine/listing/SltListing.h"

#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/listing/EntryIcons.h"
#include "engine/listing/ToolBanner.h"

namespace {

constexpr QByteArrayView kPathKey = "Path = ";
constexpr int kCrcKeyLength = 6;
constexpr int kPackedSizeKeyLength = 14;
constexpr int kSizeKeyLength = 7;
constexpr int kModifiedKeyLength = 11;
constexpr int kFirstReadableVersion = 15;

int offsetOfKey(const OutputLines& lines, qsizetype record, qsizetype end, QByteArrayView key) {
  for (qsizetype i = record; i < end; ++i) {
    if (lines.at(i).startsWith(key))
      return static_cast<int>(i - record);
  }
  return -1;
}

}  // namespace

SltLayout sltLayout9(SltType type) {
  switch (type) {
    case SltType::Zip:
      return {11, 12, 12, {14, 2, 3, 4, 10}, false};
    case SltType::Tar:
      return {11, 8, 12, {10, 2, 3, 4, -1}, false};
    case SltType::SevenZip:
      return {16, 8, 17, {10, 1, 2, 3, 5}, false};
  }
  return {};
}

SltLayout sltLayoutReadFrom(const OutputLines& lines) {
  SltLayout layout;
  layout.readsOutput = true;
  qsizetype first = -1;
  for (qsizetype i = 0; i + 1 < lines.count(); ++i) {
    if (lines.at(i) == QByteArrayView("----------")) {
      first = i + 1;
      break;
    }
  }
  if (first < 0 || !lines.at(first).startsWith(kPathKey)) {
    layout.firstRecordLine = static_cast<int>(lines.count());
    return layout;
  }
  qsizetype blank = first;
  while (blank < lines.count() && !lines.at(blank).isEmpty())
    ++blank;
  layout.firstRecordLine = static_cast<int>(first);
  layout.shape.stride = static_cast<int>(blank - first + 1);
  layout.shape.sizeAt = offsetOfKey(lines, first, blank, "Size = ");
  layout.shape.packedSizeAt = offsetOfKey(lines, first, blank, "Packed Size = ");
  layout.shape.modifiedAt = offsetOfKey(lines, first, blank, "Modified = ");
  layout.shape.crcAt = offsetOfKey(lines, first, blank, "CRC = ");
  // A record with its closing blank line must fit before the output ends.
  layout.tailLines = layout.shape.stride - 1;
  layout.minimumEnd = layout.firstRecordLine + 1;
  return layout;
}

SltLayout sltLayoutFor(const OutputLines& lines, SltType type) {
  const ToolBanner banner = ToolBanner::sevenZip(lines);
  if (banner.major >= kFirstReadableVersion)
    return sltLayoutReadFrom(lines);
  return sltLayout9(type);
}

SltPathIndex::SltPathIndex(const OutputLines& lines, int fromLine) {
  for (qsizetype i = fromLine; i < lines.count(); ++i) {
    const QByteArrayView line = lines.at(i);
    if (!line.startsWith(kPathKey))
      continue;
    const QByteArrayView path = line.sliced(kPathKey.size());
    if (!first_.contains(path))
      first_.insert(path, i);
  }
}

qsizetype SltPathIndex::find(QByteArrayView path) const {
  return first_.value(path, -1);
}

SltGetters::SltGetters(const OutputLines& lines, const SltLayout& layout)
    : lines_(lines), shape_(layout.shape), index_(lines, layout.firstRecordLine) {}

std::optional<QByteArrayView> SltGetters::valueLine(QByteArrayView name, int offset,
                                                    int keyLength) const {
  const qsizetype path = index_.find(name);
  if (path < 0)
    return std::nullopt;
  if (offset < 0)
    return QByteArrayView();
  if (path + offset >= lines_.count())
    return std::nullopt;
  const QByteArrayView line = lines_.at(path + offset);
  return line.size() > keyLength ? line.sliced(keyLength) : QByteArrayView();
}

std::optional<QString> SltGetters::crc32(QByteArrayView name) const {
  const auto value = valueLine(name, shape_.crcAt, kCrcKeyLength);
  return value ? std::optional(QString::fromUtf8(*value)) : std::nullopt;
}

std::optional<QString> SltGetters::packedSize(QByteArrayView name) const {
  const auto value = valueLine(name, shape_.packedSizeAt, kPackedSizeKeyLength);
  return value ? std::optional(SizeText::listing(PathText::intValue(*value))) : std::nullopt;
}

std::optional<QString> SltGetters::originalSize(QByteArrayView name) const {
  const auto value = valueLine(name, shape_.sizeAt, kSizeKeyLength);
  return value ? std::optional(SizeText::listing(PathText::intValue(*value))) : std::nullopt;
}

std::optional<QString> SltGetters::dateModified(QByteArrayView name) const {
  const auto value = valueLine(name, shape_.modifiedAt, kModifiedKeyLength);
  return value ? std::optional(QString::fromUtf8(*value)) : std::nullopt;
}

ArchiveEntries parseSltListing(const OutputLines& lines, SltType type, EntryIcons& icons) {
  ArchiveEntries entries;
  const SltLayout layout = sltLayoutFor(lines, type);
  const qsizetype end = lines.count() - layout.tailLines;
  if (layout.shape.stride <= 0 || end < layout.minimumEnd)
    return entries;

  const SltGetters getters(lines, layout);
  for (qsizetype i = layout.firstRecordLine; i < end && i < lines.count();
       i += layout.shape.stride) {
    const QByteArrayView line = lines.at(i);
    if (layout.readsOutput && !line.startsWith(kPathKey))
      break;
    if (containsNoCase(line, ".app/"))
      continue;
    const QByteArrayView name =
        line.size() > kPathKey.size() ? line.sliced(kPathKey.size()) : QByteArrayView();
    ArchiveEntry entry;
    entry.name = QString::fromUtf8(name);
    entry.fileIcon = icons.forName(entry.name);
    if (containsNoCase(line, ".app")) {
      entry.crc32 = entry.packedSize = entry.originalSize = kNotShown;
    } else {
      const auto crc = type == SltType::Tar ? std::optional(kNotShown) : getters.crc32(name);
      const auto packed = getters.packedSize(name);
      const auto original = getters.originalSize(name);
      if (!crc || !packed || !original)
        continue;
      entry.crc32 = *crc;
      entry.packedSize = *packed;
      entry.originalSize = *original;
    }
    const auto date = getters.dateModified(name);
    if (!date)
      continue;
    entry.dateModified = *date;
    entries.append(std::move(entry));
  }
  return entries;
}
