#pragma once

#include <QLabel>

// A label for a path or a file name: it wraps after any '/', '.', '_' or
// '-' where a plain label would only wrap at spaces, and gives the text
// back as it was set.
class PathLabel : public QLabel {
  Q_OBJECT

 public:
  explicit PathLabel(QWidget* parent = nullptr);

  void setPath(const QString& path);
  const QString& path() const { return path_; }

  // At a fixed width, as tall as the wrapped text: layouts that size their
  // window from hints would otherwise cut the second line off.
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 private:
  QString path_;
};
