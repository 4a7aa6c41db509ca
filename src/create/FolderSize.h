#pragma once

#include <QString>

#include "platform/ToolRunner.h"

// The size of a folder with everything in it, as the disk-usage tool
// counts it: allocated kilobytes, not the sum of the files' lengths.
namespace FolderSize {

// du's run for the folder's total in kilobytes: "<kilobytes>\t<path>".
ToolRun duRun(const QString& folder);

// Bytes in single precision; 0 when du cannot run or prints no number.
float bytes(ToolRunner& runner, const QString& folder);

}  // namespace FolderSize
