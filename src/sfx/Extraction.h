#pragma once

#include "bundled/BundledProgram.h"

#include <QString>

enum class ExtractionOutcome { Succeeded, NeedsPassword, WrongPassword, ToolMissing, Failed };

struct ExtractionResult {
  ExtractionOutcome outcome;
  // 7z's own error lines when it failed.
  QString details;
};

using BundledProgram::WaitForTool;

// Extracts an archive with Debian's 7z into destination, renaming extracted
// files instead of replacing existing ones. A protected archive's password is
// checked before anything is written, so a wrong guess leaves no half-written
// files behind to collide with the next attempt.
ExtractionResult extractArchive(const QString& archive, const QString& destination,
                                const QString& password, const WaitForTool& wait);
