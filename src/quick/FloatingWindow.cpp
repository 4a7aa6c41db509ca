#include "quick/FloatingWindow.h"

#include <QScreen>
#include <QWidget>

namespace FloatingWindow {

void orderFrontCentred(QWidget* window) {
  window->adjustSize();
  if (const QScreen* screen = window->screen()) {
    QRect frame = window->frameGeometry();
    frame.moveCenter(screen->availableGeometry().center());
    window->move(frame.topLeft());
  }
  window->show();
  window->raise();
  window->activateWindow();
}

}  // namespace FloatingWindow
