#pragma once

#include <QString>
#include <QStringConverter>

// Writes a text file whole or not at all. UTF-16 gets a byte order mark, so
// that the bundled programs read it in any byte order; UTF-8 gets none, as
// the tools that read it expect.
namespace TextFile {

bool write(const QString& path, const QString& text, QStringConverter::Encoding encoding);

}  // namespace TextFile
