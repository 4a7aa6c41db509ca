#pragma once

#include "platform/ToolRunner.h"

#include <QString>

#include <optional>

// The mini browser's own argument vectors for listing and deleting. Names
// reach the tools literally; the few that rar and arj cannot take so are
// refused by the caller before anything runs.
namespace MiniArchiveCommands {

// The listing run for the archive's type; none for the types the browser
// does not list ("tgz", "gz", "001", ...).
std::optional<ToolRun> listing(const QString& archivePath);

// The tool is picked by the archive's whole file name: only an archive
// named exactly "rar" or "arj" goes to rar or arj, every other one to 7-Zip.
ToolRun deletion(const QString& archivePath, const QString& entry);

}  // namespace MiniArchiveCommands
