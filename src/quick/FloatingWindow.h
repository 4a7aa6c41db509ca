#pragma once

class QWidget;

// The windows of a one-shot extraction have no owner: they come up centred
// on their screen, above other windows, with the keyboard.
namespace FloatingWindow {

void orderFrontCentred(QWidget* window);

}  // namespace FloatingWindow
