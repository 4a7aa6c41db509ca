#pragma once

#include "engine/ArchiveCommands.h"

#include <QStringList>

class ToolRunner;

// What is checked before an extraction writes anything, so that no user
// file is lost: a password that does not open an entry would leave the
// file it replaces empty, and a full disk would leave it truncated.
struct ExtractionGuard {
  enum class Verdict { Go, WrongPassword, NoRoom };

  struct Request {
    ArchiveCommands::Archive archive;
    QString folder;
    QString passwordSwitch;  // "-p..." as the extraction passes it, or empty
    bool overwrite = false;  // existing files are replaced
    bool encrypted = false;  // opening found encrypted entries or headers
    // The selected rows; empty for the whole archive.
    QStringList selected;
  };

  Verdict verdict = Verdict::Go;
  // Why the tool could not read the entries, when it said more than that the
  // password is wrong (a free RAR tool that cannot decrypt, say).
  QString reason;
  // Overwriting is off and an entry would land on an existing file.
  bool collides = false;
  qint64 needed = 0;
  qint64 available = 0;

  static ExtractionGuard check(ToolRunner& runner, const Request& request);

  // The alert's title and message for a verdict other than Go.
  QString title() const;
  QString message() const;
};
