#pragma once

#include <QString>

// A fresh hidden folder inside the destination, on the same file system,
// so that what is extracted there moves into place by renaming. It is
// removed with everything in it, links as links, when it goes.
class StagingFolder {
 public:
  explicit StagingFolder(const QString& destination);
  ~StagingFolder();
  StagingFolder(const StagingFolder&) = delete;
  StagingFolder& operator=(const StagingFolder&) = delete;

  bool isValid() const { return !path_.isEmpty(); }
  const QString& path() const { return path_; }

 private:
  QString path_;
};
