#pragma once

#include <QString>

class ToolRunner;

// The size of a folder with everything in it, as the disk-usage tool
// counts it: allocated kilobytes, not the sum of the files' lengths.
namespace FolderSize {

// Bytes in single precision; 0 when du cannot run or prints no number.
float bytes(ToolRunner& runner, const QString& folder);

}  // namespace FolderSize
