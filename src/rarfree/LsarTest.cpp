#include "rarfree/LsarTest.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

constexpr int kPasswordNeededStatus = 2;
const QString kParsingFailed = QStringLiteral("Archive parsing failed! (");
const QString kEntryEnd = QStringLiteral("... ");

}  // namespace

bool LsarTest::isSound() const {
  return exitedCleanly && counted && failed == 0 && passed > 0 && !parsingFailed && !passwordNeeded;
}

bool LsarTest::anyWrongPassword() const {
  for (const TestedEntry& entry : entries) {
    if (entry.verdict == u"Wrong password!")
      return true;
  }
  return false;
}

const TestedEntry* LsarTest::firstFailure() const {
  for (const TestedEntry& entry : entries) {
    if (!entry.passed())
      return &entry;
  }
  return nullptr;
}

LsarTest parseLsarTest(const ToolOutput& lsar) {
  static const QRegularExpression counts(QStringLiteral(R"(^(\d+) passed, (\d+) failed\.$)"));
  LsarTest test;
  const QStringList lines = QString::fromUtf8(lsar.output).split(u'\n');
  // The first line is "archive: format".
  for (qsizetype i = 1; i < lines.size(); ++i) {
    const QString& line = lines[i];
    if (const QRegularExpressionMatch match = counts.match(line); match.hasMatch()) {
      test.passed = match.captured(1).toInt();
      test.failed = match.captured(2).toInt();
      test.counted = true;
    } else if (line.startsWith(kParsingFailed)) {
      test.parsingFailed = true;
      test.parsingFailure = line.mid(kParsingFailed.size());
      test.parsingFailure.chop(1);
    } else if (const qsizetype end = line.lastIndexOf(kEntryEnd); end > 0) {
      test.entries << TestedEntry{line.left(end), line.mid(end + kEntryEnd.size())};
    }
  }
  test.passwordNeeded =
      lsar.exitCode == kPasswordNeededStatus || lsar.errors.contains("requires a password");
  test.exitedCleanly = lsar.succeeded();
  return test;
}
