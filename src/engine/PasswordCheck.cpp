#include "engine/PasswordCheck.h"

#include "engine/PathText.h"
#include "engine/TestReport.h"
#include "engine/ToolLocations.h"
#include "engine/ToolRunner.h"

#include <QStringList>

#include <climits>

namespace PasswordCheck {
namespace {

QStringList withPassword(QStringList arguments, const QString& passwordSwitch, int at) {
  if (!passwordSwitch.isEmpty())
    arguments.insert(at, passwordSwitch);
  return arguments;
}

// The smallest entry marked encrypted in a technical listing; empty when
// no entry is.
QString smallestEncryptedEntry(const QString& listing) {
  QString smallest;
  int smallestSize = INT_MAX;
  QString path;
  int size = 0;
  for (const QString& line : listing.split(u'\n')) {
    if (line.startsWith(u"Path = "))
      path = line.mid(7);
    else if (line.startsWith(u"Size = "))
      size = PathText::intValue(line.mid(7));
    else if (line == u"Encrypted = +" && size < smallestSize) {
      smallest = path;
      smallestSize = size;
    }
  }
  return smallest;
}

// Both streams: 7-Zip says "Wrong password" on its error output.
QString everythingSaid(const ToolResult& result) {
  return QString::fromUtf8(result.output + result.errors);
}

}  // namespace

Result forSevenZip(ToolRunner& runner, const QString& archive, const QString& passwordSwitch) {
  const QString listing = everythingSaid(runner.run(
      {ToolLocations::sevenZip(), withPassword({"l", "-slt", archive}, passwordSwitch, 1)}));
  if (listing.contains(u"Enter password") || listing.contains(u"Wrong password"))
    return {Verdict::Wrong, {}};
  const QString entry = smallestEncryptedEntry(listing);
  if (entry.isEmpty())
    return {
        listing.contains(u"Cannot open encrypted archive") ? Verdict::Wrong : Verdict::NotEncrypted,
        {}};
  const QString report = everythingSaid(runner.run(
      {ToolLocations::sevenZip(), withPassword({"t", archive, "--", entry}, passwordSwitch, 1)}));
  return {TestReport::passed(report, false) ? Verdict::Opens : Verdict::Wrong, {}};
}

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
