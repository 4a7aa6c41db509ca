#pragma once

#include "rarfree/ArchiveFacts.h"

#include <QString>

// The listing in the layout of RAR before version 5, which Quillet reads
// at fixed positions: eight lines of head, one line per entry ("*" first
// when the entry is encrypted, the name, two or more spaces, then size,
// packed size, ratio, date, time, attributes, CRC, method and version),
// then a ruler, the totals and an empty line.
struct RarStyleListing {
  QString banner;
  // Quillet's password probe reads any "*" as "encrypted", so no name may
  // bring one in.
  bool hideStarsInNames = false;

  QString print(const QString& archive, const ArchiveFacts& facts) const;
};
