#include "engine/FreeSpace.h"

#include <QStorageInfo>

namespace FreeSpace {
namespace {

Source& source() {
  static Source current;
  return current;
}

}  // namespace

qint64 available(const QString& folder) {
  if (source())
    return source()(folder);
  QStorageInfo storage(folder);
  storage.refresh();
  return storage.bytesAvailable();
}

void setSource(Source replacement) {
  source() = std::move(replacement);
}

}  // namespace FreeSpace
