#pragma once

#include <QString>

#include <functional>

// The name of a new archive must not be one that an archive of any type
// already has beside it: such a name gets a random suffix, so that no
// existing file is replaced or added to.
namespace CollisionRule {

// Whether the path with any of the archive extensions (".rar", ".zip",
// ".7z", ".lha", ".arj", ".tar", ".tar.gz", ".tar.bz2", ".app") exists, or
// the file the tool will write (when given) does. A dangling link counts:
// a tool would write through it.
bool taken(const QString& pathWithoutExtension, const QString& written = QString());
bool occupied(const QString& path);

// base + "_" + random, drawn again while the suffixed name is still in use
// (a fresh process draws the same suffixes, and would add to the archive an
// earlier run made).
QString suffixed(const QString& base, const std::function<QString(int length)>& random,
                 const std::function<bool(const QString& candidate)>& inUse);

}  // namespace CollisionRule
