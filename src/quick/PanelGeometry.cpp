#include "quick/PanelGeometry.h"

namespace PanelGeometry {
namespace {

constexpr double kRightOfPointer = 13.0;
constexpr double kAbovePointer = 10.0;

}  // namespace

QPoint placedAround(const QPoint& pointer, const QSize& size) {
  return QPointF(pointer.x() - 0.5 * size.width() + kRightOfPointer,
                 pointer.y() - 0.5 * size.height() - kAbovePointer)
      .toPoint();
}

QPoint dragged(const QPoint& origin, const QPointF& pressedAt, const QPointF& pointerAt,
               const QRect& available) {
  QPoint moved = (QPointF(origin) + pointerAt - pressedAt).toPoint();
  if (moved.y() < available.top())
    moved.setY(available.top());
  return moved;
}

QPoint besidePanel(const QRect& panel, const QSize& browser) {
  const int bottom = panel.y() + 2 * panel.height();
  return {panel.x() + panel.width(), bottom - browser.height()};
}

}  // namespace PanelGeometry
