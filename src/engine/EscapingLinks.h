#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

// Symbolic links an extraction left in its destination that lead outside
// it: a later extraction into the same folder would write through them.
namespace EscapingLinks {

// Whether the link's target, followed as far as it exists, lies outside
// root (both resolved through every link on the way).
bool leadsOutside(const QString& link, const QString& root);

// The moment to pass to removeNewerThan, taken before the tool runs: the
// file system's own clock, read from a file made in folder, which can lag
// the precise time by some milliseconds; the precise time when folder
// takes no file.
QDateTime now(const QString& folder);

// Removes the links under root made or changed since the given moment
// whose target lies outside root; returns their paths. Links the user had
// before are left alone.
QStringList removeNewerThan(const QString& root, const QDateTime& since);

}  // namespace EscapingLinks
