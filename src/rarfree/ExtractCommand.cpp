#include "rarfree/ExtractCommand.h"

#include "rarfree/Console.h"
#include "rarfree/ExitStatus.h"
#include "rarfree/ExtractionVerdict.h"
#include "rarfree/StagingFolder.h"
#include "rarfree/Texts.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace fs = std::filesystem;

namespace {

fs::path pathOf(const QString& path) {
  return QFile::encodeName(path).toStdString();
}

QStringList unarArguments(const CommandLine& line, const QString& archive, const QString& into) {
  // -D: entries go straight into the folder, as unrar puts them.
  QStringList arguments = {QStringLiteral("-nr"), QStringLiteral("-D"), QStringLiteral("-o"), into};
  if (line.password)
    arguments << QStringLiteral("-p") << *line.password;
  return arguments << archive;
}

void sayItems(const QList<MergedItem>& items, const QList<Failure>& failures) {
  for (const MergedItem& item : items) {
    if (item.result == MergedItem::Result::Moved)
      Console::say(QStringLiteral("Extracting  ") + item.name + QStringLiteral("  OK"));
    else if (item.result == MergedItem::Result::Kept)
      Console::say(QStringLiteral("Skipping    ") + item.name + QStringLiteral("  ") + item.why);
  }
  for (const Failure& failure : failures)
    Console::say(QStringLiteral("Not extracted  ") + failure.name + QStringLiteral("  ") +
                 failure.why);
}

}  // namespace

int extractArchive(const CommandLine& line) {
  const QString archive = QFileInfo(line.archive()).absoluteFilePath();
  const QString destination =
      QFileInfo(line.names.value(1, QStringLiteral("."))).absoluteFilePath();
  if (!QDir().mkpath(destination)) {
    Console::sayReason(QStringLiteral("cannot create the folder %1").arg(destination));
    return ExitStatus::kFailed;
  }
  const StagingFolder staging(destination);
  if (!staging.isValid()) {
    Console::sayReason(QStringLiteral("cannot write in the folder %1").arg(destination));
    return ExitStatus::kFailed;
  }
  const UnarReport unar = parseUnarReport(
      runFreeTool(QStringLiteral("unar"), unarArguments(line, archive, staging.path())));
  const ArchiveFacts facts = readArchiveFacts(line.archive(), line.password);
  const ExtractionVerdict verdict(unar, facts);
  FolderMerge merge(pathOf(staging.path()), pathOf(destination), line.overwrite,
                    [&verdict](const QString& name, const fs::path& file) {
                      return verdict.unsoundFile(name, file);
                    });
  const QList<MergedItem> items = merge.run();
  const QList<Failure> failures = verdict.failures(items);

  Console::say(Texts::kUnrarBanner);
  Console::say(QString());
  Console::say(QStringLiteral("Extracting from ") + line.archive());
  Console::say(QString());
  sayItems(items, failures);
  if (verdict.succeeded(failures)) {
    Console::say(QStringLiteral("All OK"));
    return ExitStatus::kDone;
  }
  Console::sayReason(verdict.reason(items, failures));
  return ExitStatus::kFailed;
}
