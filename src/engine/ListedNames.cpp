#include "engine/ListedNames.h"

#include "engine/ArchiveContents.h"
#include "engine/LiteralNames.h"
#include "engine/ToolLocations.h"
#include "platform/ToolRunner.h"

#include <QSet>

namespace ListedNames {

QString firstAmbiguous(ToolRunner& runner, const QString& archive, const QString& passwordSwitch,
                       const QStringList& allNames, const QStringList& chosen) {
  QStringList suspects;
  for (const QString& name : chosen) {
    if (name.contains(u'_'))
      suspects << name;
  }
  if (suspects.isEmpty())
    return {};
  for (const QString& name : suspects) {
    if (allNames.count(name) > 1)
      return name;
  }
  QStringList leading = {QStringLiteral("l"), QStringLiteral("-slt")};
  if (!passwordSwitch.isEmpty())
    leading << passwordSwitch;
  // 7-Zip matches the names given against the entries' own names.
  const ToolResult result =
      runner.run({ToolLocations::sevenZip(),
                  LiteralNames::forSevenZip(leading, QStringList{archive} + suspects)});
  QSet<QString> found;
  for (const ContentEntry& entry : ArchiveContents::fromTechnicalListing(result.text()).entries)
    found.insert(entry.path);
  for (const QString& name : suspects) {
    if (!found.contains(name))
      return name;
  }
  return {};
}

QString title() {
  return QStringLiteral("Name not supported");
}

QString message(const QString& name) {
  return QStringLiteral(
             "The entry listed as \"%1\" has another name in the archive (control "
             "characters in names are listed as \"_\"), so it cannot be handled on "
             "its own. Nothing was done.")
      .arg(name);
}

}  // namespace ListedNames
