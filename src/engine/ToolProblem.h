#pragma once

#include "platform/ToolRunner.h"

#include <QString>

#include <optional>

// What went wrong with a tool run, in words for the user.
struct ToolProblem {
  enum class Kind {
    MissingProgram,  // could not be started: an alert names the program
    Failed,          // ran but failed: one status-bar line
    NamesNotUtf8,    // printed names that are not UTF-8: nothing is listed
  };
  static ToolProblem namesNotUtf8(const ToolRun& run);
  Kind kind;
  QString message;

  // The problem of a finished run, if any.
  static std::optional<ToolProblem> of(const ToolRun& run, const ToolResult& result);
};

// The Debian package (or other source) that provides a program.
QString packageProviding(const QString& program);
