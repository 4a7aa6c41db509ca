#include "app/DefaultLevelDisplay.h"

#include <array>

DefaultLevelDisplay DefaultLevelDisplay::of(const QString& stored) {
  struct Row {
    const char* stored;
    DefaultLevelDisplay display;
  };
  static const std::array<Row, 5> rows = {{
      {"Lowest", {0, 1, QStringLiteral("Level: Lowest | Speed: Fastest")}},
      {"Low", {1, 2, QStringLiteral("Level: Low | Speed: Fast")}},
      {"Normal", {2, 3, QStringLiteral("Level: Normal | Speed: Medium")}},
      {"High", {3, 4, QStringLiteral("Level: High | Speed: Slow")}},
      {"Ultra", {4, 5, QStringLiteral("Level: Ultra | Speed: Slowest")}},
  }};
  for (const Row& row : rows) {
    if (stored == QLatin1String(row.stored))
      return row.display;
  }
  return rows[2].display;
}
