#pragma once

#include "engine/ArchiveEntry.h"
#include "engine/listing/OutputLines.h"

#include <QHash>

#include <optional>

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

// The layout of a modern 7-Zip: records start after the "----------" line
// and have the shape of the first one. std::nullopt while that record is
// not complete in output still to come.
std::optional<SltLayout> sltLayoutReadFrom(const OutputLines& lines);

// Picks the layout by the banner's version; std::nullopt while the output
// still to come decides it.
std::optional<SltLayout> sltLayoutFor(const OutputLines& lines, SltType type);

// The first "Path = " line of each path, so that looking a path up costs no
// search (the first of two equal paths wins, as a forward search would).
class SltPathIndex {
 public:
  void extend(const OutputLines& lines, qsizetype from, qsizetype to);
  qsizetype find(QByteArrayView path) const;  // -1 when absent

 private:
  QHash<QByteArray, qsizetype> first_;
};

// Turns the technical listing into rows. Fed while 7-Zip is still
// printing, it lists each record as soon as it is complete, where the
// version's layout allows; the rows are the same as from the whole output.
class SltListingParser {
 public:
  SltListingParser(SltType type, EntryIcons& icons);

  void consume(const OutputLines& lines);
  ArchiveEntries finish(const OutputLines& lines);

 private:
  void listRecords(const OutputLines& lines, qsizetype end);
  std::optional<ArchiveEntry> recordAt(const OutputLines& lines, qsizetype index) const;
  std::optional<QByteArrayView> valueOf(const OutputLines& lines, qsizetype path, int offset,
                                        int keyLength) const;

  SltType type_;
  EntryIcons& icons_;
  std::optional<SltLayout> layout_;
  SltPathIndex index_;
  qsizetype indexedTo_ = 0;
  qsizetype next_ = 0;
  bool stopped_ = false;
  ArchiveEntries entries_;
};

ArchiveEntries parseSltListing(const OutputLines& lines, SltType type, EntryIcons& icons);
