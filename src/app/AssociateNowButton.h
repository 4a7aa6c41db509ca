#pragma once

class QLabel;
class QPushButton;
class ToolRunner;

// What both "Associate now" buttons do: associate, turn into a disabled
// "Done", remember that the association was offered, and show the one line
// of a failure under the button.
namespace AssociateNowButton {

void press(ToolRunner& runner, QPushButton& button, QLabel& problem);

}  // namespace AssociateNowButton
