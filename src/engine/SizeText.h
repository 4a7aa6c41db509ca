#pragma once

#include <QString>

// The byte-count texts of the entries table and of the archive size field.
// Both read the count as a signed 32-bit value, as the tools' digits are read.
namespace SizeText {

// "%d B", "%d KB" (integer division) or "%.2f MB" (single precision).
QString listing(int bytes);

// Like listing() but with no byte form: anything up to 1048575 is "%d KB".
QString archive(int bytes);

// The archive size text of a file on disk; its size is read as 32 bits.
QString archiveFile(const QString& path);

}  // namespace SizeText
