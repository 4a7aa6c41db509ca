#pragma once

#include <QString>

#include <array>

// The three parts of the home folder a backup can hold, always in this
// order.
enum class BackupPart { Preferences, Documents, Mail };

inline constexpr std::array<BackupPart, 3> kBackupParts = {BackupPart::Preferences,
                                                           BackupPart::Documents, BackupPart::Mail};

namespace BackupParts {

// Where a part lives in the current home folder: the settings folder
// ~/.config, the desktop's documents folder, and the first mail store that
// exists of Thunderbird's, Evolution's and ~/Mail (~/Mail when none does).
QString folder(BackupPart part);

QString title(BackupPart part);

}  // namespace BackupParts
