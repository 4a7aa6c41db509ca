#include "sfx/Extraction.h"

#include <QProcess>
#include <QStandardPaths>

namespace {

struct ToolRun {
  ExtractionResult result;
  QByteArray output;
};

bool asksForPassword(const QByteArray& output) {
  // Only a line start counts: listed names appear after "Path = ".
  for (const QByteArray& line : output.split('\n'))
    if (line.startsWith("Enter password"))
      return true;
  return false;
}

bool hasEncryptedEntries(const QByteArray& listing) {
  for (const QByteArray& line : listing.split('\n'))
    if (line.trimmed() == "Encrypted = +")
      return true;
  return false;
}

ToolRun runSevenZip(const QString& program, QStringList arguments, const QString& password,
                    const WaitForTool& wait) {
  if (!password.isEmpty())
    arguments.insert(1, "-p" + password);
  // Its messages are matched below, in the C locale's words.
  QProcess tool;
  if (!BundledProgram::startSevenZip(tool, program, arguments))
    return {{ExtractionOutcome::ToolMissing, tool.errorString()}, {}};
  wait(tool);

  const QByteArray output = tool.readAllStandardOutput();
  const QString errors = QString::fromLocal8Bit(tool.readAllStandardError()).trimmed();
  if (errors.contains("Wrong password"))
    return {{ExtractionOutcome::WrongPassword, errors}, output};
  if (asksForPassword(output))
    return {{ExtractionOutcome::NeedsPassword, {}}, output};
  if (tool.exitStatus() != QProcess::NormalExit || tool.exitCode() != 0) {
    const QString details =
        errors.isEmpty() ? QString("7z stopped with status %1").arg(tool.exitCode()) : errors;
    return {{ExtractionOutcome::Failed, details}, output};
  }
  return {{ExtractionOutcome::Succeeded, {}}, output};
}

}  // namespace

ExtractionResult extractArchive(const QString& archive, const QString& destination,
                                const QString& password, const WaitForTool& wait) {
  const QString sevenZip = QStandardPaths::findExecutable("7z");
  if (sevenZip.isEmpty())
    return {ExtractionOutcome::ToolMissing, {}};

  const ToolRun listing = runSevenZip(sevenZip, {"l", "-slt", "--", archive}, password, wait);
  if (listing.result.outcome != ExtractionOutcome::Succeeded)
    return listing.result;
  if (hasEncryptedEntries(listing.output)) {
    const ToolRun test = runSevenZip(sevenZip, {"t", "-bd", "--", archive}, password, wait);
    if (test.result.outcome != ExtractionOutcome::Succeeded)
      return test.result;
  }
  return runSevenZip(sevenZip, {"x", "-y", "-aou", "-bd", "-o" + destination, "--", archive},
                     password, wait)
      .result;
}
