#include "platform/ResourceIcons.h"

namespace ResourceIcons {

QIcon named(const QString& resourceName) {
  QString base = resourceName;
  const qsizetype dot = base.lastIndexOf(u'.');
  if (dot > 0)
    base.truncate(dot);
  return QIcon(QStringLiteral(":/icons/%1.svg").arg(base));
}

QIcon themed(const QString& themeName, const QString& fallbackName) {
  return QIcon::fromTheme(themeName, named(fallbackName));
}

}  // namespace ResourceIcons
