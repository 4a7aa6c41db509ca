#include "platform/WindowPlacement.h"

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

}  // namespace WindowPlacement
