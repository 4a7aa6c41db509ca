#include "rarfree/StagingFolder.h"

#include <QFile>
#include <QTemporaryDir>

#include <filesystem>

StagingFolder::StagingFolder(const QString& destination) {
  QTemporaryDir folder(destination + QStringLiteral("/.rar-free-XXXXXX"));
  if (!folder.isValid())
    return;
  folder.setAutoRemove(false);
  path_ = folder.path();
}

StagingFolder::~StagingFolder() {
  if (!isValid())
    return;
  // remove_all takes links away without following them.
  std::error_code ignored;
  std::filesystem::remove_all(QFile::encodeName(path_).toStdString(), ignored);
}
