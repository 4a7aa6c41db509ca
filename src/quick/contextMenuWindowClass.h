#pragma once

#include <QPointF>
#include <QWidget>

class QLabel;
class QPushButton;

// The borderless quick-extract panel: translucent, above other windows,
// and dragged about by any spot that is not a button.
class contextMenuWindowClass : public QWidget {
  Q_OBJECT

 public:
  static constexpr double kOpacity = 0.9;

  explicit contextMenuWindowClass(QWidget* parent = nullptr);

  QPushButton* extractButton() const { return extract_; }
  QPushButton* cancelButton() const { return cancel_; }
  QPushButton* browseButton() const { return browse_; }
  // The archive the panel offers to extract.
  void showArchive(const QString& name, const QIcon& icon);

  // Where the pointer was pressed, in the panel's own coordinates.
  QPointF initialLocation() const { return initialLocation_; }
  void setInitialLocation(const QPointF& location) { initialLocation_ = location; }

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  QLabel* icon_;
  QLabel* name_;
  QPushButton* extract_;
  QPushButton* cancel_;
  QPushButton* browse_;
  QPointF initialLocation_;
};
