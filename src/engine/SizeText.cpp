#include "engine/SizeText.h"

#include <QFileInfo>

namespace SizeText {
namespace {

constexpr int kLargestKilobyteCount = 0xFFFFF;

QString megabytes(int bytes) {
  const float value = static_cast<float>(bytes) * 9.5367431640625e-07f;
  return QString::asprintf("%.2f MB", static_cast<double>(value));
}

}  // namespace

// Listings print a size per row, so the integer forms avoid printf.
QString listing(int bytes) {
  if (bytes <= 1023)
    return QString::number(bytes) + QStringLiteral(" B");
  if (bytes <= kLargestKilobyteCount)
    return QString::number(bytes / 1024) + QStringLiteral(" KB");
  return megabytes(bytes);
}

QString archive(int bytes) {
  if (bytes <= kLargestKilobyteCount)
    return QString::number(bytes / 1024) + QStringLiteral(" KB");
  return megabytes(bytes);
}

QString archiveFile(const QString& path) {
  return archive(static_cast<int>(static_cast<quint32>(QFileInfo(path).size())));
}

}  // namespace SizeText
