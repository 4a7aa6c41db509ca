#include "engine/ToolLocations.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace ToolLocations {

QString sharedResourcesFolder() {
  const QString applicationFolder = QCoreApplication::applicationDirPath();
  const QString installed = applicationFolder + QStringLiteral("/../share/quillet");
  if (QFileInfo::exists(installed))
    return QDir::cleanPath(installed);
  return applicationFolder + QStringLiteral("/share/quillet");
}

QString toolsFolder() {
  const QString overridden = qEnvironmentVariable("QUILLET_TOOLS_DIR");
  if (!overridden.isEmpty())
    return overridden;
  return sharedResourcesFolder() + QStringLiteral("/tools");
}

QString tool(const QString& name) {
  return toolsFolder() + u'/' + name;
}

QString sevenZip() {
  return tool(QStringLiteral("7za"));
}
QString tar() {
  return QStringLiteral("/usr/bin/tar");
}
QString unrar() {
  return tool(QStringLiteral("unrar"));
}
QString rarCompressor() {
  return tool(QStringLiteral("r"));
}
QString arj() {
  return tool(QStringLiteral("arj"));
}
QString lha() {
  return tool(QStringLiteral("lha"));
}

bool isInToolsFolder(const QString& program) {
  return QFileInfo(program).absolutePath() == QFileInfo(toolsFolder()).absoluteFilePath();
}

}  // namespace ToolLocations
