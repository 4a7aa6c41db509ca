#include "app/OnDropSwitches.h"

#include <QHash>
#include <QStringList>

namespace OnDropSwitches {
namespace {

constexpr int kFallbackLevel = 1;
// The on-drop levels are the level table's rows from "Lowest" up, which
// starts after "Store only".
constexpr int kFirstTableRow = 1;

}  // namespace

QString jobMethodFor(const QString& method) {
  static const QHash<QString, QString> methods = {{kZip, JobSettings::kZip},
                                                  {kSevenZip, JobSettings::kSevenZip},
                                                  {kRar, JobSettings::kRar},
                                                  {kArj, JobSettings::kArj},
                                                  {kLha, JobSettings::kLha}};
  return methods.value(method);
}

QString extensionFor(const QString& method) {
  const QString jobMethod = jobMethodFor(method);
  return jobMethod.isEmpty() ? QString() : JobSettings::extensionFor(jobMethod);
}

QString sevenZipType(const QString& method) {
  return method == kZip || method == kSevenZip ? jobMethodFor(method) : QString();
}

const CompressionLevel& levelFor(const QString& level) {
  static const QStringList levels = {"0", "1", "2", "3", "4"};
  const qsizetype index = levels.indexOf(level);
  return *JobSettings::levelAt(static_cast<int>(index < 0 ? kFallbackLevel : index) +
                               kFirstTableRow);
}

}  // namespace OnDropSwitches
