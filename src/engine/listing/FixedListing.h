#pragma once

#include "engine/listing/OutputLines.h"

// The line range of a fixed-position listing: entry lines start at
// firstLine and go on while the index is below the line count minus
// tailLines; nothing is listed unless that end reaches minimumEnd.
struct FixedRange {
  int firstLine = 0;
  int tailLines = 0;
  int minimumEnd = 0;

  // The end index to walk to, or -1 when the listing is skipped. Output
  // shorter than the tail ends the listing instead of reading past it.
  qsizetype endIn(const OutputLines& lines) const {
    const qsizetype end = lines.count() - tailLines;
    if (end < minimumEnd || end < 0)
      return -1;
    return end;
  }
};

// The token counted n-k from the end, or an empty view when the line has
// too few tokens.
inline QByteArrayView tokenFromEnd(const std::vector<QByteArrayView>& tokens, size_t k) {
  return tokens.size() >= k ? tokens[tokens.size() - k] : QByteArrayView();
}
