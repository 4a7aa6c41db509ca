#pragma once

#include "platform/ToolRunner.h"

#include <QString>
#include <QStringList>

#include <optional>

// The argument vectors of converting an archive to another format: the
// whole archive is extracted into a temporary folder, whose contents are
// then packed into a new archive beside the old one. Plain values: the
// converter window runs them.
namespace ConversionCommands {

// One tool run and the names in it that the tool reads from its command
// line, which must reach it literally.
struct Step {
  ToolRun run;
  QStringList names;
};

// Quillet's temporary folder + the archive's name without its extension.
QString temporaryFolder(const QString& archivePath);

// The typed password goes in as "-p" + password; nothing when it is empty,
// so that the tool reads the archive it is given.
QStringList passwordArguments(const QString& password);

// Extracts the whole archive into the folder; nothing for the types that
// are not extracted (gz, bz2, tgz, tbz2, 001...).
std::optional<Step> extraction(const QString& type, const QString& archivePath,
                               const QString& password, const QString& folder);

// Packs everything in the folder into the archive of the method beside
// the old one; "*" is handed over as it is and the tool expands it in the
// folder. Nothing for a method the converter does not make.
std::optional<Step> packing(const QString& method, const QString& archivePath,
                            const QString& password, const QString& folder);

// The archive a packing step writes.
QString packedArchive(const Step& packing);

// Whether a tool's report says that the password does not open the archive.
bool saysWrongPassword(const QString& report);

}  // namespace ConversionCommands
