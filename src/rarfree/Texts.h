#pragma once

#include <QString>

// The words rar-free prints in more than one command.
namespace Texts {

// Quillet learns the banner from a bare "unrar" run and strips it from the
// test report, so the test and the bare run print the same first line.
inline const QString kUnrarBanner =
    QStringLiteral("UNRAR 4.20 compatible (7-Zip and The Unarchiver, free software)");
// "RAR 4.20" makes Quillet read the listing in the layout before RAR 5.
inline const QString kRarBanner =
    QStringLiteral("RAR 4.20 compatible listing (7-Zip and The Unarchiver, free software)");

inline const QString kRarMissing = QStringLiteral(
    "r: RARLAB's rar is not installed; writing RAR archives needs it (Debian non-free package "
    "rar).");
inline const QString kUnrarMissing = QStringLiteral(
    "unrar: RARLAB's unrar is not installed; this command needs it (Debian non-free package "
    "unrar).");

inline const QString kRar4Encryption =
    QStringLiteral("unpacking RAR4 encryption needs RARLAB's unrar");

// A name as a report shows it: Quillet takes "All OK" anywhere in a test
// report as a pass, so no name may carry those words in.
QString inReport(const QString& name);

}  // namespace Texts
