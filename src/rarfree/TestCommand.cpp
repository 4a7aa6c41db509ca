#include "rarfree/TestCommand.h"

#include "rarfree/ArchiveFacts.h"
#include "rarfree/Console.h"
#include "rarfree/ExitStatus.h"
#include "rarfree/LsarTest.h"
#include "rarfree/Texts.h"

#include <QFileInfo>

namespace {

constexpr qsizetype kNameWidth = 40;

QString withSevenZipsWord(const QString& reason, const ArchiveFacts& facts) {
  if (facts.problem.isEmpty())
    return reason;
  return reason + QStringLiteral(" (7-Zip: ") + facts.problem + u')';
}

QString failureOf(const LsarTest& test, const ArchiveFacts& facts) {
  if (test.passwordNeeded || facts.passwordNeeded)
    return QStringLiteral("a password is needed to test this archive");
  if (facts.passwordRejected || (test.anyWrongPassword() && !facts.hasRar4Aes()))
    return QStringLiteral("wrong password");
  if (facts.hasRar4Aes())
    return Texts::kRar4Encryption;
  if (test.parsingFailed)
    return withSevenZipsWord(
        QStringLiteral("the archive is damaged or incomplete: ") + test.parsingFailure, facts);
  if (const TestedEntry* first = test.firstFailure())
    return withSevenZipsWord(QStringLiteral("%1 of %2 entries failed the test, the first: %3 (%4)")
                                 .arg(test.failed)
                                 .arg(test.passed + test.failed)
                                 .arg(first->name, first->verdict),
                             facts);
  return withSevenZipsWord(QStringLiteral("nothing in the archive could be tested"), facts);
}

}  // namespace

int testArchive(const CommandLine& line) {
  const QString archive = QFileInfo(line.archive()).absoluteFilePath();
  QStringList arguments = {QStringLiteral("-nr"), QStringLiteral("-t")};
  if (line.password)
    arguments << QStringLiteral("-p") << *line.password;
  arguments << archive;
  const LsarTest test = parseLsarTest(runFreeTool(QStringLiteral("lsar"), arguments));

  Console::say(Texts::kUnrarBanner);
  Console::say(QString());
  Console::say(QStringLiteral("Testing archive ") + Texts::inReport(line.archive()));
  Console::say(QString());
  for (const TestedEntry& entry : test.entries) {
    const QString verdict = entry.passed() ? QStringLiteral("OK") : entry.verdict;
    Console::say(QStringLiteral("Testing     ") +
                 Texts::inReport(entry.name).leftJustified(kNameWidth) + QStringLiteral("  ") +
                 verdict);
  }
  if (test.isSound()) {
    Console::say(QStringLiteral("All OK"));
    return ExitStatus::kDone;
  }
  Console::sayReason(failureOf(test, readArchiveFacts(line.archive(), line.password)));
  return ExitStatus::kFailed;
}
