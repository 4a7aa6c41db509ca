#include "quick/PathLabel.h"

namespace {

constexpr QChar kZeroWidthSpace(0x200B);

QString breakable(const QString& path) {
  QString shown;
  shown.reserve(path.size() * 2);
  for (const QChar c : path) {
    shown += c;
    if (c == u'/' || c == u'.' || c == u'_' || c == u'-')
      shown += kZeroWidthSpace;
  }
  return shown;
}

}  // namespace

PathLabel::PathLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
}

void PathLabel::setPath(const QString& path) {
  path_ = path;
  setText(breakable(path));
  setToolTip(path);
}

QSize PathLabel::sizeHint() const {
  if (maximumWidth() >= QWIDGETSIZE_MAX)
    return QLabel::sizeHint();
  return {maximumWidth(), heightForWidth(maximumWidth())};
}

QSize PathLabel::minimumSizeHint() const {
  if (maximumWidth() >= QWIDGETSIZE_MAX)
    return QLabel::minimumSizeHint();
  return sizeHint();
}
