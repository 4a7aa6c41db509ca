#pragma once

#include <QList>
#include <QString>

#include <filesystem>
#include <functional>

// What became of one item of the staging folder.
struct MergedItem {
  enum class Result { Moved, Kept, Refused };
  QString name;  // relative to the destination, "/"-separated
  Result result = Result::Moved;
  bool isFolder = false;
  QString why;  // for Kept and Refused
};

// Moves an extracted tree from a staging folder into the destination item
// by item, never following a symbolic link: links move as links, and one
// whose target lies outside the destination stays behind. Folders merge
// into existing ones; existing files are replaced or kept.
class FolderMerge {
 public:
  // Why a regular file must stay behind; empty when it may move.
  using FileCheck = std::function<QString(const QString& name, const std::filesystem::path& file)>;

  FolderMerge(std::filesystem::path staging, std::filesystem::path destination, bool overwrite,
              FileCheck check);

  QList<MergedItem> run();

 private:
  void mergeFolder(const std::filesystem::path& relative);
  void placeFolder(const std::filesystem::path& relative);
  void placeItem(const std::filesystem::path& relative);
  QString escapeOf(const std::filesystem::path& link) const;
  void note(const std::filesystem::path& relative, MergedItem::Result result,
            const QString& why = QString(), bool isFolder = false);

  std::filesystem::path staging_;
  std::filesystem::path destination_;
  std::filesystem::path resolvedStaging_;
  bool overwrite_;
  FileCheck check_;
  QList<MergedItem> items_;
};
