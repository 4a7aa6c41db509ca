#pragma once

#include <QString>

// The file managers' entries "Compress with Quillet" and "Extract with
// Quillet": Dolphin service menus and Nautilus scripts, shipped under the
// shared resources' "filemanager" folder and copied into the user's data
// folder (~/.local/share).
namespace FileManagerEntries {

// For each file manager whose compress entry is missing, copies its compress
// entry and then its extract entry, pointing them at program. An existing
// compress entry keeps both as they are; errors are ignored.
void installMissing(const QString& shippedFolder, const QString& dataHome, const QString& program);

}  // namespace FileManagerEntries
