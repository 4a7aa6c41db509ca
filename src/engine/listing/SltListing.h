#pragma once

#include "engine/ArchiveEntry.h"
#include "engine/listing/OutputLines.h"

#include <QHash>

class EntryIcons;

// Where the values of one entry stand in 7-Zip's technical listing (-slt),
// as line offsets from the entry's "Path = " line; -1 where the tool prints
// no such line.
struct SltShape {
  int stride = 0;
  int sizeAt = -1;
  int packedSizeAt = -1;
  int modifiedAt = -1;
  int crcAt = -1;
};

// The layout of one 7-Zip version for one archive type. Old versions print
// a fixed banner and fixed records; from 15 on, the block above the records
// and the keys of a record change with the archive, so the layout is read
// off the output itself.
struct SltLayout {
  int firstRecordLine = 0;
  int tailLines = 0;   // walk while index < line count - tailLines
  int minimumEnd = 0;  // nothing is listed unless that end reaches this
  SltShape shape;
  bool readsOutput = false;
};

enum class SltType { Zip, Tar, SevenZip };

// The layouts of 7-Zip 9.x, the version whose numbers the listing rules
// were first counted on.
SltLayout sltLayout9(SltType type);

// The layout of a modern 7-Zip for this output: records start after the
// "----------" line and have the shape of the first one.
SltLayout sltLayoutReadFrom(const OutputLines& lines);

// Picks the layout by the banner's version.
SltLayout sltLayoutFor(const OutputLines& lines, SltType type);

// The first "Path = " line of each path, so that looking a path up costs no
// search (the first of two equal paths wins, as a forward search would).
class SltPathIndex {
 public:
  SltPathIndex(const OutputLines& lines, int fromLine);
  qsizetype find(QByteArrayView path) const;  // -1 when absent

 private:
  QHash<QByteArrayView, qsizetype> first_;
};

// The value getters: each looks up the entry's first "Path = " line and
// reads its value line; std::nullopt when the path is not found or the line
// would lie past the end.
class SltGetters {
 public:
  SltGetters(const OutputLines& lines, const SltLayout& layout);
  std::optional<QString> crc32(QByteArrayView name) const;
  std::optional<QString> packedSize(QByteArrayView name) const;
  std::optional<QString> originalSize(QByteArrayView name) const;
  std::optional<QString> dateModified(QByteArrayView name) const;

 private:
  std::optional<QByteArrayView> valueLine(QByteArrayView name, int offset, int keyLength) const;

  const OutputLines& lines_;
  SltShape shape_;
  SltPathIndex index_;
};

ArchiveEntries parseSltListing(const OutputLines& lines, SltType type, EntryIcons& icons);
