#include "app/OnDropSwitches.h"

#include <QStringList>

namespace OnDropSwitches {
namespace {

constexpr int kFallbackLevel = 1;
// The on-drop levels are the level table's rows from "Lowest" up, which
// starts after "Store only".
constexpr int kFirstTableRow = 1;

}  // namespace

QString extensionFor(const QString& method) {
  if (method == kZip)
    return QStringLiteral(".zip");
  if (method == kSevenZip)
    return QStringLiteral(".7z");
  if (method == kRar)
    return QStringLiteral(".rar");
  if (method == kArj)
    return QStringLiteral(".arj");
  if (method == kLha)
    return QStringLiteral(".lha");
  return {};
}

QString sevenZipType(const QString& method) {
  if (method == kZip)
    return JobSettings::kZip;
  if (method == kSevenZip)
    return JobSettings::kSevenZip;
  return {};
}

const CompressionLevel& levelFor(const QString& level) {
  static const QStringList levels = {"0", "1", "2", "3", "4"};
  const qsizetype index = levels.indexOf(level);
  return *JobSettings::levelAt(static_cast<int>(index < 0 ? kFallbackLevel : index) +
                               kFirstTableRow);
}

}  // namespace OnDropSwitches
