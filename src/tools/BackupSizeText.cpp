#include "tools/BackupSizeText.h"

#include "engine/PathText.h"

#include <cstdlib>
#include <cstring>

namespace BackupSizeText {
namespace {

constexpr int kLargestKilobyteSize = 1048575;
constexpr int kSmallestMegabyteSize = 1048577;
constexpr int kLargestMegabyteSize = 1073741823;
constexpr int kSmallestGigabyteSize = 1073741825;

// An integer handed to "%.2f": the formatter reads the integer's bits as
// the low half of a double, a denormal that prints as 0.00 (negative when
// the size wrapped).
double integerReadAsDouble(int value) {
  const quint64 bits = static_cast<quint32>(value);
  double misread = 0;
  std::memcpy(&misread, &bits, sizeof misread);
  return misread;
}

}  // namespace

int bytesFromDu(QByteArrayView output) {
  const qsizetype space = output.indexOf(' ');
  const int kilobytes = PathText::intValue(space < 0 ? output : output.first(space));
  return static_cast<int>(static_cast<quint32>(kilobytes) * 1024u);
}

QString folder(int bytes) {
  if (bytes <= kLargestKilobyteSize)
    return QString::asprintf("%.2f KB", integerReadAsDouble(bytes / 1024));
  if (bytes >= kSmallestMegabyteSize && bytes <= kLargestMegabyteSize)
    return QString::asprintf("%.2f MB", static_cast<double>(bytes * (1.0f / 1048576.0f)));
  if (bytes >= kSmallestGigabyteSize)
    return QString::asprintf("%.2f GB", static_cast<double>(bytes * (1.0f / 1073741824.0f)));
  return {};
}

float leadingNumber(const QString& sizeText) {
  const QByteArray piece = sizeText.section(u' ', 0, 0).toUtf8();
  return std::strtof(piece.constData(), nullptr);
}

std::optional<QString> total(float sum) {
  if (sum < 1024.0f)
    return QString::asprintf("%.2f", static_cast<double>(sum)) + QStringLiteral(" MB");
  if (sum > 1024.0f)
    return QString::asprintf("%.2f", static_cast<double>(sum * (1.0f / 1024.0f))) +
           QStringLiteral(" GB");
  return std::nullopt;
}

}  // namespace BackupSizeText
