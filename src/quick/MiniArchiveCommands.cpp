#include "quick/MiniArchiveCommands.h"

#include "engine/ArchiveType.h"
#include "engine/LiteralNames.h"
#include "engine/PathText.h"
#include "engine/ToolLocations.h"

namespace MiniArchiveCommands {
namespace {

// rar and arj take a name that starts with "-" behind "--".
QStringList entryArguments(const QString& name) {
  return name.startsWith(u'-') ? QStringList{QStringLiteral("--"), name} : QStringList{name};
}

}  // namespace

std::optional<ToolRun> listing(const QString& archivePath) {
  const QString type = ArchiveType::ofPath(archivePath);
  if (type == ArchiveType::Rar)
    return ToolRun{ToolLocations::rarCompressor(), {QStringLiteral("l"), archivePath}};
  if (type == ArchiveType::Arj)
    return ToolRun{ToolLocations::arj(), {QStringLiteral("l"), archivePath}};
  if (type == ArchiveType::Lha)
    return ToolRun{ToolLocations::lha(), {QStringLiteral("v"), archivePath}};
  if (type == ArchiveType::Zip || type == ArchiveType::Tar || type == ArchiveType::SevenZip)
    return ToolRun{
        ToolLocations::sevenZip(),
        LiteralNames::forSevenZip({QStringLiteral("l")}, {archivePath}, {QStringLiteral("-slt")})};
  return std::nullopt;
}

ToolRun deletion(const QString& archivePath, const QString& entry) {
  const QString remove = QStringLiteral("d");
  const QString name = PathText::lastPathComponent(archivePath);
  if (name == ArchiveType::Rar)
    return {ToolLocations::rarCompressor(),
            QStringList{remove, archivePath} + entryArguments(entry)};
  if (name == ArchiveType::Arj)
    return {ToolLocations::arj(),
            QStringList{remove, archivePath} + entryArguments(PathText::lastPathComponent(entry))};
  return {ToolLocations::sevenZip(), LiteralNames::forSevenZip({remove}, {archivePath, entry})};
}

}  // namespace MiniArchiveCommands
