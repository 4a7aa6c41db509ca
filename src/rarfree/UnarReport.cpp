#include "rarfree/UnarReport.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr int kPasswordNeededStatus = 2;
const QString kParsingFailed = QStringLiteral("Archive parsing failed! (");

// The name ends at the last "  (size)... " of the line.
const QRegularExpression& entryLine() {
  static const QRegularExpression pattern(QStringLiteral(R"(^  (.+)  \([^()]*\)\.\.\. (.*)$)"));
  return pattern;
}

QString reasonOf(const QString& status) {
  const qsizetype open = status.indexOf(u'(');
  if (open < 0 || !status.endsWith(u')'))
    return status;
  return status.mid(open + 1, status.size() - open - 2);
}

}  // namespace

QString UnarReport::failureOf(const QString& name) const {
  return reasons.value(name);
}

UnarReport parseUnarReport(const ToolOutput& unar) {
  UnarReport report;
  for (const QString& line : QString::fromUtf8(unar.output).split(u'\n')) {
    if (const QRegularExpressionMatch match = entryLine().match(line); match.hasMatch()) {
      const QString status = match.captured(2);
      if (status.startsWith(u"Failed!")) {
        QString name = match.captured(1);
        if (name.endsWith(u'/'))
          name.chop(1);
        const QString reason = reasonOf(status);
        report.failures.append({name, reason});
        report.reasons.insert(name, reason);
      }
    } else if (line == u"No files extracted.") {
      report.nothingExtracted = true;
    } else if (line.startsWith(kParsingFailed)) {
      report.parsingFailed = true;
      report.parsingFailure = line.mid(kParsingFailed.size());
      report.parsingFailure.chop(1);
    }
  }
  report.passwordNeeded =
      unar.exitCode == kPasswordNeededStatus || unar.errors.contains("requires a password");
  report.exitedCleanly = unar.succeeded();
  return report;
}
