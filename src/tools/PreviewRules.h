#pragma once

#include "platform/ToolRunner.h"

#include <QString>

#include <functional>
#include <optional>

// What the file preview decides on plain values: which archives it
// refuses, which entries are images, how one entry is extracted and where
// a walk to the next or previous image stops.
namespace PreviewRules {

// rar, arj and lha archives are not previewed.
bool refuses(const QString& archiveType);

// The extension is exactly one of jpg, png, gif, tiff, icns, all in lower
// or all in upper case; mixed case and jpeg are not images here.
bool isImage(const QString& entryName);

// Only zip and 7z entries are extracted; other types pass the refusal but
// extract nothing.
bool extracts(const QString& archiveType);

// 7-Zip's "e" (no stored folders, so the file arrives as folder + its last
// name component) for zip and 7z archives; nothing for other types. The
// password goes in as "-p" + password, and not at all when it is empty.
std::optional<ToolRun> extraction(const QString& archiveType, const QString& archivePath,
                                  const QString& entry, const QString& password,
                                  const QString& folder);

// 7-Zip's test of that one entry.
ToolRun entryTest(const QString& archivePath, const QString& entry, const QString& password);

// The row a walk from the current row reaches, moving by step (+1 or -1)
// over the count rows: the first image past the current row, or the last
// row the walk can reach when no image comes first. Nothing when no row is
// selected or there is no row to move to.
std::optional<int> walk(int current, int count, int step,
                        const std::function<QString(int)>& nameAt);

}  // namespace PreviewRules
