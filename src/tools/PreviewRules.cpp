#include "tools/PreviewRules.h"

#include "engine/ArchiveType.h"
#include "engine/LiteralNames.h"
#include "engine/PathText.h"
#include "engine/ToolLocations.h"
#include "tools/ConversionCommands.h"

#include <QStringList>

namespace PreviewRules {

bool refuses(const QString& archiveType) {
  return archiveType == ArchiveType::Rar || archiveType == ArchiveType::Arj ||
         archiveType == ArchiveType::Lha;
}

bool isImage(const QString& entryName) {
  static const QStringList extensions = {"jpg", "png", "gif", "tiff", "icns",
                                         "JPG", "PNG", "GIF", "TIFF", "ICNS"};
  return extensions.contains(PathText::pathExtension(entryName));
}

bool extracts(const QString& archiveType) {
  return archiveType == ArchiveType::Zip || archiveType == ArchiveType::SevenZip;
}

std::optional<ToolRun> extraction(const QString& archiveType, const QString& archivePath,
                                  const QString& entry, const QString& password,
                                  const QString& folder) {
  if (!extracts(archiveType))
    return std::nullopt;
  return ToolRun{
      ToolLocations::sevenZip(),
      LiteralNames::forSevenZip(QStringList{"e"} + ConversionCommands::passwordArguments(password),
                                {archivePath, entry}, {"-o" + folder, "-y"})};
}

ToolRun entryTest(const QString& archivePath, const QString& entry, const QString& password) {
  return {
      ToolLocations::sevenZip(),
      LiteralNames::forSevenZip(QStringList{"t"} + ConversionCommands::passwordArguments(password),
                                {archivePath, entry})};
}

std::optional<int> walk(int current, int count, int step,
                        const std::function<QString(int)>& nameAt) {
  const auto canSelect = [count](int row) { return row >= 0 && row < count; };
  if (current < 0 || !canSelect(current + step))
    return std::nullopt;
  int row = current + step;
  while (!isImage(nameAt(row)) && canSelect(row + step))
    row += step;
  return row;
}

}  // namespace PreviewRules
