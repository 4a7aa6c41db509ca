#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

// What one run of 7z, lsar or unar left behind.
struct ToolOutput {
  int exitCode = 0;
  bool crashed = false;
  QByteArray output;
  QByteArray errors;

  bool succeeded() const { return !crashed && exitCode == 0; }
};

// Thrown when one of the free tools cannot be started.
struct MissingTool {
  QString program;
};

// Runs one of the free tools of Debian main that rar-free builds on. The
// tool gets no input, so none of them waits for a password at a terminal,
// and a UTF-8 locale, so that names come out as UTF-8.
ToolOutput runFreeTool(const QString& program, const QStringList& arguments);
