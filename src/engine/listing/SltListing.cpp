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
constexpr qsizetype kBannerLines = 6;

int offsetOfKey(const OutputLines& lines, qsizetype record, qsizetype end, QByteArrayView key) {
  for (qsizetype i = record; i < end; ++i) {
    if (lines.at(i).startsWith(key))
      return static_cast<int>(i - record);
  }
  return -1;
}

QString sizeText(QByteArrayView digits) {
  return SizeText::listing(PathText::intValue(digits));
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

std::optional<SltLayout> sltLayoutReadFrom(const OutputLines& lines) {
  SltLayout layout;
  layout.readsOutput = true;
  const qsizetype count = lines.count();
  qsizetype first = 0;
  while (first < count && lines.at(first) != QByteArrayView("----------"))
    ++first;
  ++first;
  qsizetype blank = first;
  while (blank < count && !lines.at(blank).isEmpty())
    ++blank;
  if (blank >= count) {
    if (!lines.isFinished())
      return std::nullopt;
    layout.firstRecordLine = static_cast<int>(count);
    return layout;
  }
  if (!lines.at(first).startsWith(kPathKey)) {
    layout.firstRecordLine = static_cast<int>(count);
    return layout;
  }
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

std::optional<SltLayout> sltLayoutFor(const OutputLines& lines, SltType type) {
  if (!lines.isFinished() && lines.count() < kBannerLines)
    return std::nullopt;
  if (ToolBanner::sevenZip(lines).major >= kFirstReadableVersion)
    return sltLayoutReadFrom(lines);
  return sltLayout9(type);
}

void SltPathIndex::extend(const OutputLines& lines, qsizetype from, qsizetype to) {
  for (qsizetype i = from; i < to; ++i) {
    const QByteArrayView line = lines.at(i);
    if (!line.startsWith(kPathKey))
      continue;
    const QByteArrayView path = line.sliced(kPathKey.size());
    const QByteArray key = QByteArray::fromRawData(path.data(), path.size());
    if (!first_.contains(key))
      first_.insert(QByteArray(path.data(), path.size()), i);
  }
}

qsizetype SltPathIndex::find(QByteArrayView path) const {
  return first_.value(QByteArray::fromRawData(path.data(), path.size()), -1);
}

SltListingParser::SltListingParser(SltType type, EntryIcons& icons) : type_(type), icons_(icons) {}

void SltListingParser::consume(const OutputLines& lines) {
  if (!layout_) {
    layout_ = sltLayoutFor(lines, type_);
    if (!layout_)
      return;
    next_ = indexedTo_ = layout_->firstRecordLine;
  }
  // Fixed layouts count their end from the last line, known only at the end.
  if (layout_->readsOutput && layout_->shape.stride > 0)
    listRecords(lines, lines.count() - layout_->tailLines);
}

ArchiveEntries SltListingParser::finish(const OutputLines& lines) {
  consume(lines);
  if (!layout_)
    return {};
  const qsizetype end = lines.count() - layout_->tailLines;
  if (layout_->shape.stride > 0 && end >= layout_->minimumEnd)
    listRecords(lines, end);
  return std::move(entries_);
}

void SltListingParser::listRecords(const OutputLines& lines, qsizetype end) {
  index_.extend(lines, indexedTo_, lines.count());
  indexedTo_ = std::max(indexedTo_, lines.count());
  for (; !stopped_ && next_ < end && next_ < lines.count(); next_ += layout_->shape.stride) {
    if (layout_->readsOutput && !lines.at(next_).startsWith(kPathKey)) {
      stopped_ = true;
      break;
    }
    if (auto entry = recordAt(lines, next_))
      entries_.append(std::move(*entry));
  }
}

std::optional<QByteArrayView> SltListingParser::valueOf(const OutputLines& lines, qsizetype path,
                                                        int offset, int keyLength) const {
  if (offset < 0)
    return QByteArrayView();
  if (path + offset >= lines.count())
    return std::nullopt;
  const QByteArrayView line = lines.at(path + offset);
  return line.size() > keyLength ? line.sliced(keyLength) : QByteArrayView();
}

// The record's row; std::nullopt when its name is found nowhere, so its
// values cannot be read.
std::optional<ArchiveEntry> SltListingParser::recordAt(const OutputLines& lines,
                                                       qsizetype index) const {
  const QByteArrayView line = lines.at(index);
  if (containsNoCase(line, ".app/"))
    return std::nullopt;
  const QByteArrayView name =
      line.size() > kPathKey.size() ? line.sliced(kPathKey.size()) : QByteArrayView();
  const qsizetype path = index_.find(name);
  if (path < 0)
    return std::nullopt;
  const SltShape& shape = layout_->shape;

  ArchiveEntry entry;
  entry.name = QString::fromUtf8(name);
  entry.fileIcon = icons_.setListViewIcon(entry.name);
  if (containsNoCase(line, ".app")) {
    entry.crc32 = entry.packedSize = entry.originalSize = kNotShown;
  } else {
    const auto crc = valueOf(lines, path, shape.crcAt, kCrcKeyLength);
    const auto packed = valueOf(lines, path, shape.packedSizeAt, kPackedSizeKeyLength);
    const auto original = valueOf(lines, path, shape.sizeAt, kSizeKeyLength);
    if (!crc || !packed || !original)
      return std::nullopt;
    entry.crc32 = type_ == SltType::Tar ? kNotShown : QString::fromUtf8(*crc);
    entry.packedSize = sizeText(*packed);
    entry.originalSize = sizeText(*original);
  }
  const auto date = valueOf(lines, path, shape.modifiedAt, kModifiedKeyLength);
  if (!date)
    return std::nullopt;
  entry.dateModified = QString::fromUtf8(*date);
  return entry;
}

ArchiveEntries parseSltListing(const OutputLines& lines, SltType type, EntryIcons& icons) {
  SltListingParser parser(type, icons);
  return parser.finish(lines);
}
