#pragma once

#include <QString>

#include <functional>

class QProcess;

enum class ExtractionOutcome { Succeeded, NeedsPassword, WrongPassword, ToolMissing, Failed };

struct ExtractionResult {
  ExtractionOutcome outcome;
  // 7z's own error lines when it failed.
  QString details;
};

// Returns once a started 7z has ended; the graphical stub keeps its windows
// responsive meanwhile, the text one simply blocks.
using WaitForTool = std::function<void(QProcess&)>;

// Extracts an archive with Debian's 7z into destination, renaming extracted
// files instead of replacing existing ones. A protected archive's password is
// checked before anything is written, so a wrong guess leaves no half-written
// files behind to collide with the next attempt.
ExtractionResult extractArchive(const QString& archive, const QString& destination,
                                const QString& password, const WaitForTool& wait);
