#pragma once

#include "rarfree/FreeTool.h"

#include <QHash>
#include <QList>
#include <QString>

#include <utility>

// What "unar" said about an extraction: per entry "  name  (20 B)... OK."
// or "  name  (16 B)... Failed! (reason)", then a closing line.
struct UnarReport {
  // Entries unar could not write whole, names without a trailing "/", each
  // with unar's reason. It leaves an empty or partial file for them.
  QList<std::pair<QString, QString>> failures;
  QHash<QString, QString> reasons;  // the same, by name
  bool nothingExtracted = false;    // "No files extracted."
  bool passwordNeeded = false;
  bool parsingFailed = false;
  QString parsingFailure;
  bool exitedCleanly = false;

  // unar's reason for the entry; empty when it did not fail.
  QString failureOf(const QString& name) const;
};

UnarReport parseUnarReport(const ToolOutput& unar);
