#pragma once

#include <QString>
#include <QStringView>

// Path and number rules on plain text, the way the rest of Quillet expects
// them: '/'-separated, a trailing '/' ignored, no file system access.
namespace PathText {

QString lastPathComponent(const QString& path);
QString pathExtension(const QString& path);
QString deletingLastPathComponent(const QString& path);
// The path without the extension of its last component.
QString deletingPathExtension(const QString& path);

// Leading decimal integer after white space, optional sign; 0 when there is
// none; saturates at the 32-bit limits instead of wrapping.
int intValue(QStringView text);
int intValue(QByteArrayView text);

}  // namespace PathText
