#pragma once

class QScreen;
class QWidget;

// Tool windows and panels appear centred on the window that owns them and
// come to the front.
namespace WindowPlacement {

void centreAndShow(QWidget* window);
// Moves the window, frame included, to the middle of the screen's free
// area (the window's own screen when none is given).
void centreOnScreen(QWidget* window, const QScreen* screen = nullptr);

}  // namespace WindowPlacement
