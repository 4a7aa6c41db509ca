#pragma once

#include <QString>

// Where the archiving tools and Quillet's other resources are found: the
// tools folder holds 7za, unrar, r, arj and lha by their own names.
namespace ToolLocations {

// $QUILLET_TOOLS_DIR when set, else <prefix>/share/quillet/tools of an
// installation, else the build tree's copy.
QString toolsFolder();
QString sharedResourcesFolder();

QString tool(const QString& name);  // toolsFolder() + "/" + name
QString sevenZip();
// The system tar; its options are GNU tar's.
QString tar();
QString unrar();
QString rarCompressor();
QString arj();
QString lha();

bool isInToolsFolder(const QString& program);

}  // namespace ToolLocations
