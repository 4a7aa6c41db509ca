#pragma once

#include "platform/ToolRunner.h"

#include <QString>
#include <QStringList>

#include <optional>

// Makes Quillet the desktop's default application for the archive types
// it handles, through xdg-mime.
namespace FileAssociation {

inline const QString kDesktopFile = QStringLiteral("quillet.desktop");

// One MIME type per archive content type, in the order they are set; tar,
// lha and arj each have two content types, so x-tar and x-arj come twice.
const QStringList& mimeTypes();

// Runs xdg-mime default quillet.desktop TYPE for every type of the list in
// turn without looking at the results. The one line to show when xdg-mime
// cannot be started at all.
std::optional<QString> associate(ToolRunner& runner);

// Start-up offers the association until this is so.
bool wasOffered();
void rememberOffered();

}  // namespace FileAssociation
