#pragma once

#include "rarfree/FreeTool.h"

#include <QList>
#include <QString>

// One line of "lsar -t": "name... OK.", "name... Unpacking failed!", or
// "name... " with no verdict for folders and links, which count as passed.
struct TestedEntry {
  QString name;
  QString verdict;

  bool passed() const { return verdict.isEmpty() || verdict == u"OK."; }
};

// What "lsar -t" found.
struct LsarTest {
  QList<TestedEntry> entries;
  int passed = 0;
  int failed = 0;
  bool counted = false;        // the "N passed, M failed." line came
  bool parsingFailed = false;  // "Archive parsing failed! (reason)"
  QString parsingFailure;
  bool passwordNeeded = false;
  bool exitedCleanly = false;

  // Sound only when something was tested and nothing failed: a RAR5 volume
  // whose other volumes are missing tests as "0 passed, 0 failed".
  bool isSound() const;
  bool anyWrongPassword() const;
  const TestedEntry* firstFailure() const;
};

LsarTest parseLsarTest(const ToolOutput& lsar);
