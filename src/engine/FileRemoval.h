#pragma once

#include <QString>

namespace FileRemoval {

// Removes a file, or a folder with everything in it. A link of that name
// goes alone, never what it leads to.
void removeFileOrFolder(const QString& path);

}  // namespace FileRemoval
