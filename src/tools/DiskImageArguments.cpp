#include "tools/DiskImageArguments.h"

#include <array>

namespace DiskImageArguments {

QString algorithm(int item) {
  return item == 0 ? QStringLiteral("AES-128") : QStringLiteral("AES-256");
}

QString size(const QString& sizeText, int unit) {
  static const std::array<const char*, 3> kUnits = {"k", "m", "g"};
  if (unit < 0 || unit >= static_cast<int>(kUnits.size()))
    return sizeText;
  return sizeText + QLatin1String(kUnits[unit]);
}

QStringList arguments(const DiskImageOrder& order) {
  QStringList arguments = {QStringLiteral("create"), QStringLiteral("-fs"), QStringLiteral("HFS+")};
  if (order.sizeText != u'0')
    arguments << QStringLiteral("-size") << size(order.sizeText, order.sizeUnit);
  if (order.encrypted)
    arguments << QStringLiteral("-encryption") << algorithm(order.algorithm) << kPasswordOnInput;
  arguments << QStringLiteral("-srcfolder") << order.source << order.image;
  return arguments;
}

}  // namespace DiskImageArguments
