#pragma once

#include <QIcon>
#include <QString>

// Quillet's own icons. The names of image resources ("zip.icns",
// "application.png") and plain names ("folder") both work.
namespace ResourceIcons {

QIcon named(const QString& resourceName);

// A theme icon, or Quillet's own drawing when the desktop has no theme.
QIcon themed(const QString& themeName, const QString& fallbackName);

}  // namespace ResourceIcons
