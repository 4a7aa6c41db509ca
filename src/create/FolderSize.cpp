#include "create/FolderSize.h"

#include "platform/ToolRunner.h"

#include <cstdlib>

namespace FolderSize {
namespace {

// du prints "<kilobytes>\t<path>"; the number ends at the tab.
float leadingNumber(const QString& text) {
  const QByteArray firstPiece = text.section(u' ', 0, 0).toUtf8();
  return std::strtof(firstPiece.constData(), nullptr);
}

}  // namespace

float bytes(ToolRunner& runner, const QString& folder) {
  ToolRun run;
  run.program = QStringLiteral("/usr/bin/du");
  run.arguments = {QStringLiteral("-k"), QStringLiteral("-d"), QStringLiteral("0"), folder};
  // du still prints the total when some subfolder is unreadable and exits
  // 1, so its exit code and complaints are not looked at.
  const ToolResult result = runner.run(run);
  if (!result.started)
    return 0.0f;
  return leadingNumber(result.text()) * 1024.0f;
}

}  // namespace FolderSize
