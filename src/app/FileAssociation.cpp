#include "app/FileAssociation.h"

#include "engine/ToolProblem.h"
#include "platform/PreferenceKeys.h"
#include "platform/PreferencesStore.h"

namespace FileAssociation {
namespace {

ToolRun defaultHandlerRun(const QString& mimeType) {
  ToolRun run;
  run.program = QStringLiteral("xdg-mime");
  run.arguments = {QStringLiteral("default"), kDesktopFile, mimeType};
  return run;
}

}  // namespace

const QStringList& mimeTypes() {
  static const QStringList types = {
      QStringLiteral("application/vnd.rar"),
      QStringLiteral("application/zip"),
      QStringLiteral("application/x-tar"),
      QStringLiteral("application/x-tar"),
      QStringLiteral("application/x-bzip2"),
      QStringLiteral("application/gzip"),
      QStringLiteral("application/x-7z-compressed"),
      QStringLiteral("application/x-lha"),
      QStringLiteral("application/x-lzh-compressed"),
      QStringLiteral("application/x-arj"),
      QStringLiteral("application/x-arj"),
  };
  return types;
}

std::optional<QString> associate(ToolRunner& runner) {
  for (const QString& type : mimeTypes()) {
    const ToolRun run = defaultHandlerRun(type);
    const ToolResult result = runner.run(run);
    // Without xdg-mime every further type would fail the same way.
    if (!result.started)
      return ToolProblem::of(run, result)->message;
  }
  return std::nullopt;
}

bool wasOffered() {
  return PreferencesStore::isYes(PreferenceKeys::kIssupportedfilesassociatedonce);
}

void rememberOffered() {
  PreferencesStore::setText(PreferenceKeys::kIssupportedfilesassociatedonce, PreferenceKeys::kYes);
}

}  // namespace FileAssociation
