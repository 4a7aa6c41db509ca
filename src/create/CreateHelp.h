#pragma once

class QWidget;

// The help windows of the new-archive options.
namespace CreateHelp {

void showArchiveHelp(QWidget* owner);
void showSfxHelp(QWidget* owner);

}  // namespace CreateHelp
