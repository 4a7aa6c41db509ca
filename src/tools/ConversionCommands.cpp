#include "tools/ConversionCommands.h"

#include "create/JobSettings.h"
#include "engine/ArchiveCommands.h"
#include "engine/ArchiveType.h"
#include "engine/LiteralNames.h"
#include "engine/OwnTemporaryFolder.h"
#include "engine/PathText.h"
#include "engine/ToolLocations.h"

namespace ConversionCommands {
namespace {

const QString kEverything = QStringLiteral("*");

}  // namespace

QString temporaryFolder(const QString& archivePath) {
  QString name = PathText::deletingPathExtension(PathText::lastPathComponent(archivePath));
  // "..zip" and "...zip" would name the folder itself or the one above it.
  if (name.isEmpty() || name == u"." || name == u"..")
    name = QStringLiteral("archive");
  return OwnTemporaryFolder::path() + name;
}

QStringList passwordArguments(const QString& password) {
  return password.isEmpty() ? QStringList{} : QStringList{QStringLiteral("-p") + password};
}

std::optional<Step> extraction(const QString& type, const QString& archivePath,
                               const QString& password, const QString& folder) {
  const QString archiveFolder = PathText::deletingLastPathComponent(archivePath);
  const QString name = LiteralNames::fileArgument(PathText::lastPathComponent(archivePath));
  Step step;
  if (type == ArchiveType::Zip || type == ArchiveType::SevenZip || type == ArchiveType::Tar) {
    step.run = {ToolLocations::sevenZip(),
                LiteralNames::forSevenZip(QStringList{"x"} + passwordArguments(password),
                                          {archivePath}, {"-o" + folder, "-ssc", "-aoa", "-y"})};
    step.names = {archivePath};
  } else if (type == ArchiveType::Rar) {
    step.run = {
        ToolLocations::unrar(),
        QStringList{"x", "-o+", "-y"} + passwordArguments(password) + QStringList{name, folder}};
    step.run.directory = archiveFolder;
    step.names = {name, folder};
  } else if (type == ArchiveType::Lha) {
    step.run = {ToolLocations::lha(), {"x", "-f", archivePath}};
    step.run.directory = folder;
    step.names = {archivePath};
  } else if (type == ArchiveType::Arj) {
    step.run = {ToolLocations::arj(), {"x", "-y", name, folder}};
    step.run.directory = archiveFolder;
    step.names = {name, folder};
  } else if (ArchiveType::isCompressedTar(type)) {
    step.run = ArchiveCommands::extractAll({type, archivePath}, {folder, true, QString()});
    step.names = {archivePath};
  } else {
    return std::nullopt;
  }
  return step;
}

std::optional<Step> packing(const QString& method, const QString& archivePath,
                            const QString& password, const QString& folder) {
  const QString base =
      ArchiveType::withoutTypeExtension(archivePath, ArchiveType::ofOpenedPath(archivePath));
  Step step;
  if (method == JobSettings::kSevenZip || method == JobSettings::kZip) {
    const QString archive = base + (method == JobSettings::kZip ? ".zip" : ".7z");
    step.run = {ToolLocations::sevenZip(), QStringList{"a", method} + passwordArguments(password) +
                                               QStringList{archive, kEverything, "-ssc"}};
    step.names = {archive};
  } else if (method == JobSettings::kRar) {
    const QString archive = base + QStringLiteral(".rar");
    step.run = {ToolLocations::rarCompressor(), {"a", "-r", archive, kEverything, "-ep1"}};
    step.names = {archive};
  } else {
    return std::nullopt;
  }
  step.run.directory = folder;
  return step;
}

QString packedArchive(const Step& packing) {
  return packing.names.value(0);
}

bool saysWrongPassword(const QString& report) {
  for (const char* phrase : {"Wrong password", "Enter password", "Cannot open encrypted archive",
                             "password is incorrect", "Incorrect password"}) {
    if (report.contains(QLatin1String(phrase), Qt::CaseInsensitive))
      return true;
  }
  return false;
}

}  // namespace ConversionCommands
