#pragma once

#include <QString>

// Quillet's own temporary folder, <temp>/quillet-<user id>/. Some tools
// empty or delete it as a whole, so it must never be the shared temporary
// folder itself, nor a folder (or link) that someone else put there.
namespace OwnTemporaryFolder {

// The folder's path, ending in "/"; nothing is created.
QString path();

// Creates the folder (private to the user) when it is missing. False when
// it cannot be made, or when what stands at its path is not a folder of
// this user's own: a link or someone else's folder is never used.
bool ensure();

// The alert's title and message when ensure() fails.
QString unusableTitle();
QString unusableMessage();

}  // namespace OwnTemporaryFolder
