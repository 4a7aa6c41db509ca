#pragma once

#include <QPoint>
#include <QPointF>
#include <QRect>
#include <QSize>

// Where the quick-extract panel goes, in screen coordinates that grow
// downwards.
namespace PanelGeometry {

// Centred on the pointer, 13 to the right and 10 up; it may reach past the
// screen's edges.
QPoint placedAround(const QPoint& pointer, const QSize& size);

// Moved by as much as the pointer moved since it was pressed (both points
// in the panel's own coordinates). Only the top edge is kept inside the
// available area, so the panel cannot hide under a top bar.
QPoint dragged(const QPoint& origin, const QPointF& pressedAt, const QPointF& pointerAt,
               const QRect& available);

// The mini browser's place: against the panel's right edge, its bottom one
// panel height below the panel's bottom, whatever the screen. Both are
// frames in screen coordinates.
QPoint besidePanel(const QRect& panel, const QSize& browser);

}  // namespace PanelGeometry
