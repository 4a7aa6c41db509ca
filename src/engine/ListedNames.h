#pragma once

#include <QString>
#include <QStringList>

class ToolRunner;

// 7-Zip lists a name with control characters (a newline, say) with "_" in
// their place, so a row's name may not be its entry's name: acting on it by
// that name would miss the entry or hit another one that really has it.
namespace ListedNames {

// The first of the chosen names that cannot be trusted to mean exactly its
// own row: one with "_" that another row shows too, or that 7-Zip does not
// find in the archive under exactly that name. Empty when all are sound.
QString firstAmbiguous(ToolRunner& runner, const QString& archive, const QString& passwordSwitch,
                       const QStringList& allNames, const QStringList& chosen);

// The alert's title and message for such a name.
QString title();
QString message(const QString& name);

}  // namespace ListedNames
