#include "engine/listing/OutputSearch.h"

OutputSearch::OutputSearch(QList<QByteArray> needles) : needles_(std::move(needles)) {
  for (QByteArray& needle : needles_)
    needle = needle.toLower();
}

// Texts never span lines, so whole lines are searched and the unfinished
// last one waits for the rest.
void OutputSearch::append(QByteArrayView chunk) {
  const qsizetype lastEnd = chunk.lastIndexOf('\n');
  if (lastEnd < 0) {
    unfinished_.append(chunk.data(), chunk.size());
    return;
  }
  if (unfinished_.isEmpty()) {
    search(chunk.first(lastEnd + 1));
  } else {
    unfinished_.append(chunk.data(), lastEnd + 1);
    search(unfinished_);
    unfinished_.clear();
  }
  unfinished_.append(chunk.sliced(lastEnd + 1));
}

void OutputSearch::finish() {
  search(unfinished_);
  unfinished_.clear();
}

void OutputSearch::search(QByteArrayView lines) {
  if (utf8_)
    utf8_ = lines.isValidUtf8();
  if (found_ || !utf8_)
    return;
  const QByteArray lower = lines.toByteArray().toLower();
  for (const QByteArray& needle : needles_) {
    if (lower.contains(needle)) {
      found_ = true;
      return;
    }
  }
}
