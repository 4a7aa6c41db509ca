#pragma once

#include "bundled/BundledProgram.h"

#include <QString>
#include <QStringList>

struct RestoreResult {
  bool succeeded = false;
  QString error;          // why nothing or not everything was restored
  int restoredFiles = 0;  // files put in place
  // Files of the home folder left as they were because they are newer than
  // the backup's copies, or because a folder stands where the backup has a
  // file (or the other way round); relative to the home folder.
  QStringList kept;
};

using BundledProgram::WaitForTool;

// Where a folder stored at the archive's top level belongs in the home
// folder: Evolution's "mail" under ~/.local/share/evolution, everything
// else (.config, Documents, .thunderbird, Mail) right in it.
QString destinationOf(const QString& topLevelName, const QString& home);

// Unpacks the backup archive with 7za into a folder of its own inside home,
// then moves every file into place. A file already in the home folder is
// replaced only when it is not newer than the backup's copy.
RestoreResult restoreBackup(const QString& archive, const QString& home, const WaitForTool& wait);
