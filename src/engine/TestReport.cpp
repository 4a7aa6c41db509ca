#include "engine/TestReport.h"

#include "platform/ToolRunner.h"

#include <QHash>

namespace TestReport {

QString sevenZipBannerFrom(const QString& bareOutput) {
  const qsizetype usage = bareOutput.indexOf(QStringLiteral("Usage:"));
  return usage > 0 ? bareOutput.left(usage) : QString();
}

QString unrarBannerFrom(const QString& bareOutput) {
  for (const QString& line : bareOutput.split(u'\n')) {
    if (!line.trimmed().isEmpty())
      return line + u'\n';
  }
  return {};
}

QString installedBanner(ToolRunner& runner, const QString& program, bool isUnrar) {
  static QHash<QString, QString> learned;
  const auto found = learned.constFind(program);
  if (found != learned.cend())
    return *found;
  const QString bare = runner.run({program, {}}).text();
  const QString banner = isUnrar ? unrarBannerFrom(bare) : sevenZipBannerFrom(bare);
  learned.insert(program, banner);
  return banner;
}

QString withoutBanners(QString report, const QStringList& banners) {
  for (const QString& banner : banners) {
    if (!banner.isEmpty())
      report.remove(banner);
  }
  return report;
}

bool passed(const QString& report, bool isRar) {
  return report.contains(isRar ? QStringLiteral("All OK") : QStringLiteral("Everything is Ok"));
}

}  // namespace TestReport
