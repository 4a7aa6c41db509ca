#include "quick/FloatingWindow.h"

#include "platform/WindowPlacement.h"

#include <QPainter>
#include <QPropertyAnimation>
#include <QWidget>

namespace FloatingWindow {
namespace {

constexpr int kFadeMs = 250;

}  // namespace

void orderFrontCentred(QWidget* window) {
  window->adjustSize();
  WindowPlacement::centreOnScreen(window);
  window->show();
  window->raise();
  window->activateWindow();
}

QAbstractAnimation* fadeTo(QWidget* window, double opacity) {
  for (auto* running : window->findChildren<QPropertyAnimation*>(Qt::FindDirectChildrenOnly)) {
    if (running->propertyName() == "windowOpacity")
      running->stop();
  }
  auto* fade = new QPropertyAnimation(window, "windowOpacity", window);
  fade->setDuration(kFadeMs);
  fade->setEndValue(opacity);
  fade->start(QAbstractAnimation::DeleteWhenStopped);
  return fade;
}

void paintPanel(QWidget* panel) {
  QPainter painter(panel);
  painter.setPen(panel->palette().color(QPalette::Mid));
  painter.setBrush(panel->palette().color(QPalette::Window));
  painter.drawRect(panel->rect().adjusted(0, 0, -1, -1));
}

}  // namespace FloatingWindow
