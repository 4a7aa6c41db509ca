#pragma once

class QWidget;

// Tool windows and panels appear centred on the window that owns them and
// come to the front.
namespace WindowPlacement {

void centreAndShow(QWidget* window);

}  // namespace WindowPlacement
