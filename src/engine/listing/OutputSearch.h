#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QList>

// Looks for texts (case-insensitive, ASCII) in a tool's output as it
// arrives, without keeping it: only the unfinished last line is held. Like
// every reading of output, output that is not valid UTF-8 finds nothing.
class OutputSearch {
 public:
  explicit OutputSearch(QList<QByteArray> needles);

  void append(QByteArrayView chunk);
  void finish();
  bool found() const { return found_ && utf8_; }

 private:
  void search(QByteArrayView lines);

  QList<QByteArray> needles_;  // lower case
  QByteArray unfinished_;
  bool found_ = false;
  bool utf8_ = true;
};
