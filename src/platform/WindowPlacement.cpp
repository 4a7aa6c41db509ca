#include "platform/WindowPlacement.h"

#include <QScreen>
#include <QWidget>

namespace WindowPlacement {

void centreAndShow(QWidget* window) {
  window->adjustSize();
  if (QWidget* owner = window->parentWidget())
    window->move(owner->geometry().center() - window->rect().center());
  window->show();
  window->raise();
  window->activateWindow();
}

void centreOnScreen(QWidget* window, const QScreen* screen) {
  if (!screen)
    screen = window->screen();
  if (!screen)
    return;
  QRect frame = window->frameGeometry();
  frame.moveCenter(screen->availableGeometry().center());
  window->move(frame.topLeft());
}

}  // namespace WindowPlacement
