#pragma once

#include <QString>

#include <functional>

// The bytes a folder's file system has free for Quillet's user.
namespace FreeSpace {

qint64 available(const QString& folder);

// Tests that cannot mount a small file system stand in their own figures;
// an empty source brings the real one back.
using Source = std::function<qint64(const QString& folder)>;
void setSource(Source source);

}  // namespace FreeSpace
