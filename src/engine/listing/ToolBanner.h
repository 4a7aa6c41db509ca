#pragma once

#include "engine/listing/OutputLines.h"

// The version a tool names in the banner at the top of its output. The
// fixed line and column positions of a listing belong to a version, so
// each parser picks its layout by this.
struct ToolBanner {
  int major = 0;
  int minor = 0;
  bool found = false;

  // "7-Zip [64] 26.02 : ...", "7-Zip (a) [64] 26.02", "7-Zip 9.20  ...".
  static ToolBanner sevenZip(const OutputLines& lines);
  // "RAR 3.90 beta 2 ...", "UNRAR 5.61 beta 1 freeware ...".
  static ToolBanner rar(const OutputLines& lines);
  // "ARJ32 v 3.10, Copyright ...", "ARJ v 2.41a ...".
  static ToolBanner arj(const OutputLines& lines);
};
