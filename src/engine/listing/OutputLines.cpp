#include "engine/listing/OutputLines.h"

#include <QtCore/qbytearrayalgorithms.h>

OutputLines::OutputLines(QByteArray output) : output_(std::move(output)) {
  starts_.reserve(static_cast<size_t>(output_.size() / 24 + 1));
  starts_.push_back(0);
  const char* data = output_.constData();
  const qsizetype size = output_.size();
  for (qsizetype i = 0; i < size; ++i) {
    if (data[i] == '\n')
      starts_.push_back(i + 1);
  }
}

QByteArrayView OutputLines::at(qsizetype index) const {
  const qsizetype start = starts_[static_cast<size_t>(index)];
  const qsizetype end =
      index + 1 < count() ? starts_[static_cast<size_t>(index + 1)] - 1 : output_.size();
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
  for (qsizetype i = 0; i + needle.size() <= line.size(); ++i) {
    if (qstrnicmp(line.data() + i, needle.data(), needle.size()) == 0)
      return true;
  }
  return false;
}
