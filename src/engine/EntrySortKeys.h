#pragma once

#include "engine/ArchiveEntry.h"

#include <QSet>
#include <QString>

#include <optional>

// Orderable values behind the texts of the entries table, so that a column
// sorts by what it means rather than by how it reads.
namespace EntrySortKeys {

// The byte count a size text stands for ("12 B", "3 KB", "1.50 MB");
// -1 for "---" and anything else that is not a size.
qint64 bytesOf(const QString& sizeText);

// Milliseconds since the epoch of a listing's date text, in any of the
// forms the listers print; nullopt when the text is no date.
std::optional<qint64> timeOf(const QString& dateText);

// The names that are folders: those ending in "/" and those other names
// lie inside.
QSet<QString> folderNames(const ArchiveEntries& entries);

}  // namespace EntrySortKeys
