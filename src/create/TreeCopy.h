#pragma once

#include <QString>

// Copies a folder and everything in it, keeping permissions (the stub's
// programs must stay executable) and links as links.
namespace TreeCopy {

// False when the target exists already or a part could not be copied.
bool copy(const QString& source, const QString& target);

}  // namespace TreeCopy
