#pragma once

class QAbstractAnimation;
class QWidget;

// The windows of a one-shot extraction have no owner: they come up centred
// on their screen, above other windows, with the keyboard.
namespace FloatingWindow {

void orderFrontCentred(QWidget* window);
// Animates the window's opacity from where it is to the given value,
// taking over from a fade still running.
QAbstractAnimation* fadeTo(QWidget* window, double opacity);
// Paints a frameless panel's background with a thin border, so that it
// reads as one piece above whatever lies under it. Square and opaque: an X
// session without a compositor shows a translucent corner as black.
void paintPanel(QWidget* panel);

}  // namespace FloatingWindow
