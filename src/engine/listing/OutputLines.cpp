#include "engine/listing/OutputLines.h"

#include <QtCore/qbytearrayalgorithms.h>

#include <cstring>

namespace {

char asciiLower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

}  // namespace

OutputLines::OutputLines(QByteArray output) : output_(std::move(output)) {
  scan();
  finish();
}

OutputLines::OutputLines() = default;

void OutputLines::append(QByteArrayView chunk) {
  output_.append(chunk.data(), chunk.size());
  scan();
}

void OutputLines::finish() {
  if (finished_)
    return;
  finished_ = true;
  if (utf8_)
    utf8_ = QByteArrayView(output_).sliced(starts_.back()).isValidUtf8();
}

// Finds the new line ends and checks the completed lines for UTF-8 in one
// go; a line end never falls inside a UTF-8 sequence.
void OutputLines::scan() {
  const char* data = output_.constData();
  const qsizetype size = output_.size();
  const qsizetype firstNew = starts_.back();
  while (scanned_ < size) {
    const void* end = std::memchr(data + scanned_, '\n', static_cast<size_t>(size - scanned_));
    if (!end) {
      scanned_ = size;
      break;
    }
    scanned_ = static_cast<const char*>(end) - data + 1;
    starts_.push_back(scanned_);
  }
  if (utf8_ && starts_.back() > firstNew)
    utf8_ = QByteArrayView(data + firstNew, starts_.back() - firstNew).isValidUtf8();
}

qsizetype OutputLines::count() const {
  const auto lines = static_cast<qsizetype>(starts_.size());
  return finished_ ? lines : lines - 1;
}

QByteArrayView OutputLines::at(qsizetype index) const {
  const auto i = static_cast<size_t>(index);
  const qsizetype start = starts_[i];
  const qsizetype end = i + 1 < starts_.size() ? starts_[i + 1] - 1 : output_.size();
  return QByteArrayView(output_.constData() + start, end - start);
}

std::vector<QByteArrayView> tokensOf(QByteArrayView line) {
  std::vector<QByteArrayView> tokens;
  qsizetype start = 0;
  for (qsizetype i = 0; i <= line.size(); ++i) {
    if (i == line.size() || line[i] == ' ') {
      if (i > start)
        tokens.push_back(line.sliced(start, i - start));
      start = i + 1;
    }
  }
  return tokens;
}

bool containsNoCase(QByteArrayView line, QByteArrayView needle) {
  if (needle.isEmpty())
    return true;
  const char first = asciiLower(needle[0]);
  for (qsizetype i = 0; i + needle.size() <= line.size(); ++i) {
    if (asciiLower(line[i]) == first &&
        qstrnicmp(line.data() + i, needle.data(), static_cast<size_t>(needle.size())) == 0)
      return true;
  }
  return false;
}
