#pragma once

#include <QString>

// How start-up shows the stored default level: the preferences' pop-up,
// the create tab's slider and its label. The texts differ on purpose from
// the slider's own, and an unknown or absent level shows as "Normal".
struct DefaultLevelDisplay {
  int popUpIndex;
  int sliderPosition;
  QString label;

  static DefaultLevelDisplay of(const QString& stored);
};
