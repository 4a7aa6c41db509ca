#include "rarfree/FolderMerge.h"

#include <QFile>

#include <algorithm>
#include <vector>

namespace fs = std::filesystem;

namespace {

QString nameOf(const fs::path& relative) {
  return QFile::decodeName(QByteArray::fromStdString(relative.generic_string()));
}

QString textOf(const std::error_code& error) {
  return QString::fromLocal8Bit(error.message());
}

bool leavesTheTree(const fs::path& relative) {
  return relative.empty() || *relative.begin() == "..";
}

// The staging folder as the kernel resolves it, for comparing link targets.
fs::path resolved(const fs::path& folder) {
  std::error_code error;
  const fs::path path = fs::canonical(folder, error);
  return error ? folder : path;
}

std::vector<fs::path> childrenOf(const fs::path& folder) {
  std::vector<fs::path> names;
  std::error_code error;
  for (const fs::directory_entry& child : fs::directory_iterator(folder, error))
    names.push_back(child.path().filename());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

FolderMerge::FolderMerge(fs::path staging, fs::path destination, bool overwrite, FileCheck check)
    : staging_(std::move(staging)),
      destination_(std::move(destination)),
      resolvedStaging_(resolved(staging_)),
      overwrite_(overwrite),
      check_(std::move(check)) {}

QList<MergedItem> FolderMerge::run() {
  mergeFolder(fs::path());
  return items_;
}

void FolderMerge::mergeFolder(const fs::path& relative) {
  for (const fs::path& child : childrenOf(staging_ / relative)) {
    const fs::path item = relative / child;
    std::error_code error;
    const fs::file_status status = fs::symlink_status(staging_ / item, error);
    if (fs::is_symlink(status)) {
      const QString escape = escapeOf(item);
      if (escape.isEmpty())
        placeItem(item);
      else
        note(item, MergedItem::Result::Refused, escape);
    } else if (fs::is_directory(status)) {
      placeFolder(item);
    } else if (!fs::is_regular_file(status)) {
      note(item, MergedItem::Result::Refused, QStringLiteral("not a file, folder or link"));
    } else if (const QString unsound = check_(nameOf(item), staging_ / item); !unsound.isEmpty()) {
      note(item, MergedItem::Result::Refused, unsound);
    } else {
      placeItem(item);
    }
  }
}

// A folder of the archive goes into an existing folder of that name; a
// file or link in its place is replaced only when overwriting.
void FolderMerge::placeFolder(const fs::path& relative) {
  const fs::path source = staging_ / relative;
  const fs::path target = destination_ / relative;
  std::error_code error;
  const fs::file_status existing = fs::symlink_status(target, error);
  const bool needsFolder = !fs::is_directory(existing);
  if (fs::exists(existing) && needsFolder) {
    if (!overwrite_) {
      note(relative, MergedItem::Result::Refused,
           QStringLiteral("a file or link of that name exists"));
      return;
    }
    fs::remove(target, error);
  }
  if (needsFolder && !fs::create_directory(target, source, error)) {
    note(relative, MergedItem::Result::Refused, textOf(error));
    return;
  }
  note(relative, MergedItem::Result::Moved, QString(), true);
  mergeFolder(relative);
  // Moving the content in touched a new folder; it keeps the archive's time.
  if (needsFolder) {
    const fs::file_time_type time = fs::last_write_time(source, error);
    if (!error)
      fs::last_write_time(target, time, error);
  }
}

void FolderMerge::placeItem(const fs::path& relative) {
  const fs::path target = destination_ / relative;
  std::error_code error;
  const fs::file_status existing = fs::symlink_status(target, error);
  if (fs::exists(existing)) {
    if (!overwrite_) {
      note(relative, MergedItem::Result::Kept, QStringLiteral("exists, kept"));
      return;
    }
    if (fs::is_directory(existing)) {
      note(relative, MergedItem::Result::Refused, QStringLiteral("a folder of that name exists"));
      return;
    }
    fs::remove(target, error);
  }
  fs::rename(staging_ / relative, target, error);
  if (error)
    note(relative, MergedItem::Result::Refused, textOf(error));
  else
    note(relative, MergedItem::Result::Moved);
}

// Both the link's words and where it leads now in the staging folder must
// stay inside: a target through another link can climb out where the
// words alone do not.
QString FolderMerge::escapeOf(const fs::path& link) const {
  std::error_code error;
  const fs::path target = fs::read_symlink(staging_ / link, error);
  if (error)
    return textOf(error);
  const QString outside = QStringLiteral("its target %1 lies outside the destination")
                              .arg(QFile::decodeName(QByteArray::fromStdString(target.string())));
  if (target.is_absolute() || leavesTheTree((link.parent_path() / target).lexically_normal()))
    return outside;
  const fs::path leadsTo = fs::weakly_canonical(staging_ / link.parent_path() / target, error);
  if (error || leavesTheTree(leadsTo.lexically_relative(resolvedStaging_)))
    return outside;
  return {};
}

void FolderMerge::note(const fs::path& relative, MergedItem::Result result, const QString& why,
                       bool isFolder) {
  items_.append({nameOf(relative), result, isFolder, why});
}
