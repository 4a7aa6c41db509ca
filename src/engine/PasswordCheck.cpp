#include "engine/PasswordCheck.h"

#include "engine/TestReport.h"
#include "engine/ToolLocations.h"
#include "platform/ToolRunner.h"

#include <QStringList>

namespace PasswordCheck {
namespace {

QStringList withPassword(QStringList arguments, const QString& passwordSwitch, int at) {
  if (!passwordSwitch.isEmpty())
    arguments.insert(at, passwordSwitch);
  return arguments;
}

}  // namespace

Result forRar(ToolRunner& runner, const QString& archive, const QString& passwordSwitch) {
  const QString listing = runner.run({ToolLocations::unrar(), {"l", archive}}).text();
  if (!listing.contains(u'*'))
    return {Verdict::NotEncrypted, {}};
  const ToolResult test =
      runner.run({ToolLocations::unrar(), withPassword({"t", archive}, passwordSwitch, 1)});
  if (TestReport::passed(test.text(), true))
    return {Verdict::Opens, {}};
  const QString said = test.lastErrorLine();
  return {Verdict::Wrong, said.contains(u"password", Qt::CaseInsensitive) ? QString() : said};
}

}  // namespace PasswordCheck
