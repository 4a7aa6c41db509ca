#include "create/FolderSize.h"

#include <cstdlib>

namespace FolderSize {
namespace {

// The number ends at the tab; the path after it may be in any encoding.
float leadingNumber(const QByteArray& output) {
  return std::strtof(output.constData(), nullptr);
}

}  // namespace

ToolRun duRun(const QString& folder) {
  return {QStringLiteral("/usr/bin/du"),
          {QStringLiteral("-k"), QStringLiteral("-d"), QStringLiteral("0"), folder}};
}

float bytes(ToolRunner& runner, const QString& folder) {
  const ToolRun run = duRun(folder);
  // du still prints the total when some subfolder is unreadable and exits
  // 1, so its exit code and complaints are not looked at.
  const ToolResult result = runner.run(run);
  if (!result.started)
    return 0.0f;
  return leadingNumber(result.output) * 1024.0f;
}

}  // namespace FolderSize
