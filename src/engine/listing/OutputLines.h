#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <vector>

// A tool's output split at "\n" (a trailing "\r" stays part of its line).
// It can be filled while the tool is still printing: then only the lines
// that are complete so far count, until finish() adds the last one. Views
// from at() stay valid only until the next append().
class OutputLines {
 public:
  // The whole output at once.
  explicit OutputLines(QByteArray output);
  // Output to come, through append() and finish().
  OutputLines();

  void append(QByteArrayView chunk);
  void finish();
  bool isFinished() const { return finished_; }

  qsizetype count() const;
  QByteArrayView at(qsizetype index) const;
  QString text(qsizetype index) const { return QString::fromUtf8(at(index)); }

  // Whether every line so far is valid UTF-8.
  bool isUtf8() const { return utf8_; }

 private:
  void scan();

  QByteArray output_;
  std::vector<qsizetype> starts_{0};
  qsizetype scanned_ = 0;
  bool finished_ = false;
  bool utf8_ = true;
};

// The line split at every single space with the empty pieces dropped.
std::vector<QByteArrayView> tokensOf(QByteArrayView line);

// Case-insensitive (ASCII) search, the way listing lines are tested.
bool containsNoCase(QByteArrayView line, QByteArrayView needle);
