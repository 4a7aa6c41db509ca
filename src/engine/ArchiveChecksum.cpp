#include "engine/ArchiveChecksum.h"

#include <QFile>

#include <zlib.h>

#include <array>

namespace ArchiveChecksum {

QString GetCRC32(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return text(0);
  uLong crc = crc32(0L, Z_NULL, 0);
  std::array<char, 1 << 16> buffer;
  qint64 read = 0;
  while ((read = file.read(buffer.data(), buffer.size())) > 0)
    crc = crc32(crc, reinterpret_cast<const Bytef*>(buffer.data()), static_cast<uInt>(read));
  return text(crc);
}

QString text(quint64 checksum) {
  return QString::asprintf("%X", static_cast<unsigned>(checksum & 0xFFFFFFFFu));
}

}  // namespace ArchiveChecksum
