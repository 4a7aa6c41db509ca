#pragma once

#include <QList>
#include <QWidget>

class QCheckBox;
class QToolButton;

// The extraction options: a grid of check boxes while the window has room,
// and one "Options" button offering the same choices as a menu when it has
// not, so that a small window keeps its height for the listing and the
// grid never makes the window wider. The menu
// clicks the check boxes themselves, so whatever a check box does on a click
// happens the same way from the menu.
class FoldingOptions : public QWidget {
  Q_OBJECT

 public:
  // Below this height of the watched page the options fold.
  static constexpr int kFoldBelowHeight = 560;

  FoldingOptions(const QList<QCheckBox*>& boxes, int columns, QWidget* parent = nullptr);

  // Folds and unfolds with the height of page, and folds when the page is
  // too narrow for the grid.
  void watch(QWidget* page);
  void setFolded(bool folded);
  bool isFolded() const;
  QToolButton* foldedButton() const { return button_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* grid_;
  QToolButton* button_;
};
