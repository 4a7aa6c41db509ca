#include "app/FoldingOptions.h"

#include <QAction>
#include <QCheckBox>
#include <QEvent>
#include <QGridLayout>
#include <QLayout>
#include <QMenu>
#include <QSignalBlocker>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

QAction* mirror(QCheckBox* box, QMenu* menu) {
  QAction* action = menu->addAction(box->text());
  action->setCheckable(true);
  action->setChecked(box->isChecked());
  // The box's own click writes its setting; the action only follows it.
  QObject::connect(action, &QAction::triggered, box, [box, action] {
    const QSignalBlocker quiet(action);
    box->click();
  });
  QObject::connect(box, &QCheckBox::toggled, action, [action](bool checked) {
    const QSignalBlocker quiet(action);
    action->setChecked(checked);
  });
  return action;
}

}  // namespace

FoldingOptions::FoldingOptions(const QList<QCheckBox*>& boxes, int columns, QWidget* parent)
    : QWidget(parent), grid_(new QWidget), button_(new QToolButton) {
  // The page folds the grid when it is too narrow, so its width binds nothing.
  grid_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* grid = new QGridLayout(grid_);
  grid->setContentsMargins(0, 0, 0, 0);
  auto* menu = new QMenu(button_);
  for (int i = 0; i < boxes.size(); ++i) {
    grid->addWidget(boxes.at(i), i / columns, i % columns);
    mirror(boxes.at(i), menu);
  }
  button_->setObjectName(QStringLiteral("extractionOptionsButton"));
  button_->setText(tr("Extraction options"));
  button_->setIcon(QIcon::fromTheme(QStringLiteral("configure")));
  button_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  button_->setPopupMode(QToolButton::InstantPopup);
  button_->setMenu(menu);
  button_->hide();

  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(grid_);
  layout->addWidget(button_, 0, Qt::AlignLeft);
}

void FoldingOptions::watch(QWidget* page) {
  page->installEventFilter(this);
}

void FoldingOptions::setFolded(bool folded) {
  grid_->setVisible(!folded);
  button_->setVisible(folded);
}

bool FoldingOptions::isFolded() const {
  return grid_->isHidden();
}

bool FoldingOptions::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) {
    auto* page = static_cast<QWidget*>(watched);
    const QMargins margins = page->layout() ? page->layout()->contentsMargins() : QMargins();
    const int room = page->width() - margins.left() - margins.right();
    setFolded(page->height() < kFoldBelowHeight || room < grid_->minimumSizeHint().width());
  }
  return QWidget::eventFilter(watched, event);
}
