#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

// A tool's output split at "\n" (a trailing "\r" stays part of its line),
// kept as views into the one buffer so that large listings cost no copies.
class OutputLines {
 public:
  explicit OutputLines(QByteArray output);

  qsizetype count() const { return static_cast<qsizetype>(starts_.size()); }
  QByteArrayView at(qsizetype index) const;
  QString text(qsizetype index) const { return QString::fromUtf8(at(index)); }

 private:
  QByteArray output_;
  std::vector<qsizetype> starts_;
};

// The line split at every single space with the empty pieces dropped.
std::vector<QByteArrayView> tokensOf(QByteArrayView line);

// Case-insensitive (ASCII) search, the way listing lines are tested.
bool containsNoCase(QByteArrayView line, QByteArrayView needle);
