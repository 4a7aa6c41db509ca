#pragma once

#include "create/JobSettings.h"

#include <QString>

// The on-drop preferences turned into what the tools are given: the
// archive's extension, 7za's type switch and each tool's level switch.
namespace OnDropSwitches {

// The texts "onDropCompressionMethod" holds.
inline const QString kZip = QStringLiteral("ZIP");
inline const QString kSevenZip = QStringLiteral("7z");
inline const QString kRar = QStringLiteral("RAR");
inline const QString kArj = QStringLiteral("ARJ");
inline const QString kLha = QStringLiteral("LHA");

// The create window's method of the same format; empty for any other text.
QString jobMethodFor(const QString& method);
// ".zip", ".7z", ".rar", ".arj" or ".lha"; empty for any other text.
QString extensionFor(const QString& method);
// "-tzip" or "-t7z"; empty for the methods 7za does not make.
QString sevenZipType(const QString& method);
// The switches of an "onDropCompressionLevel" text, "0" (lowest) to "4"
// (ultra); any other text counts as "1".
const CompressionLevel& levelFor(const QString& level);

}  // namespace OnDropSwitches
