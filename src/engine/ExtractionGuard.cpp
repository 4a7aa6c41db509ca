#include "engine/ExtractionGuard.h"

#include "engine/ArchiveContents.h"
#include "engine/ArchiveType.h"
#include "engine/FreeSpace.h"
#include "engine/LiteralNames.h"
#include "engine/PasswordCheck.h"
#include "engine/TestReport.h"
#include "engine/ToolLocations.h"
#include "platform/ToolRunner.h"

#include <QDir>
#include <QFileInfo>
#include <QLocale>

namespace {

// Beyond this many names one test of the whole archive is quicker than a
// command line of names, and asks at least as much.
constexpr qsizetype kMostNamesTested = 1000;

// tar, arj and lha replace existing files unless they are told not to.
bool keepsOnlyBySwitch(const QString& type) {
  return type == ArchiveType::Arj || type == ArchiveType::Lha || type == ArchiveType::Tbz2 ||
         type == ArchiveType::Bz2;
}

bool landsOnExistingFile(const QDir& folder, const ContentEntry& entry) {
  if (entry.folder)
    return false;
  const QFileInfo target(folder.filePath(entry.path));
  return target.exists() || target.isSymLink();
}

bool passwordOpens(ToolRunner& runner, const ExtractionGuard::Request& request,
                   const QList<ContentEntry>& entries) {
  QStringList names;
  for (const ContentEntry& entry : entries)
    names << entry.path;
  if (names.size() > kMostNamesTested)
    names.clear();
  QStringList leading = {QStringLiteral("t")};
  if (!request.passwordSwitch.isEmpty())
    leading << request.passwordSwitch;
  const ToolResult result =
      runner.run({ToolLocations::sevenZip(),
                  LiteralNames::forSevenZip(leading, QStringList{request.archive.path} + names)});
  return TestReport::passed(QString::fromUtf8(result.output + result.errors), false);
}

}  // namespace

ExtractionGuard ExtractionGuard::check(ToolRunner& runner, const Request& request) {
  ExtractionGuard guard;
  const QString& type = request.archive.type;
  const bool replaces = request.overwrite || !request.selected.isEmpty();
  if (!replaces && !keepsOnlyBySwitch(type))
    return guard;
  const ArchiveContents contents =
      ArchiveContents::read(runner, type, request.archive.path, request.passwordSwitch);
  const QList<ContentEntry> written =
      request.selected.isEmpty() ? contents.entries : contents.under(request.selected);
  const QDir folder(request.folder);
  if (!replaces) {
    guard.collides = !contents.complete ||
                     std::any_of(written.cbegin(), written.cend(),
                                 [&](const auto& e) { return landsOnExistingFile(folder, e); });
    return guard;
  }

  if (request.encrypted && type == ArchiveType::Rar) {
    const PasswordCheck::Result rar =
        PasswordCheck::forRar(runner, request.archive.path, request.passwordSwitch);
    if (rar.verdict == PasswordCheck::Verdict::Wrong) {
      guard.verdict = Verdict::WrongPassword;
      guard.reason = rar.reason;
      return guard;
    }
  } else if (request.encrypted) {
    QList<ContentEntry> endangered;
    for (const ContentEntry& entry : written) {
      if (entry.encrypted && landsOnExistingFile(folder, entry))
        endangered << entry;
    }
    if (contents.wrongPassword ||
        (!endangered.isEmpty() && !passwordOpens(runner, request, endangered))) {
      guard.verdict = Verdict::WrongPassword;
      return guard;
    }
  }

  for (const ContentEntry& entry : written) {
    if (!entry.folder)
      guard.needed += entry.size;
  }
  guard.available = FreeSpace::available(request.folder);
  if (guard.needed > guard.available)
    guard.verdict = Verdict::NoRoom;
  return guard;
}

QString ExtractionGuard::title() const {
  if (verdict == Verdict::NoRoom)
    return QObject::tr("Not enough space");
  return reason.isEmpty() ? QObject::tr("Wrong password") : QObject::tr("Nothing extracted");
}

QString ExtractionGuard::message() const {
  const QString nothingReplaced =
      QObject::tr("Nothing was extracted, so no existing file was replaced.");
  if (verdict == Verdict::NoRoom) {
    const QLocale locale;
    return QObject::tr("The entries to extract need %1, but the destination has only %2 free.")
               .arg(locale.formattedDataSize(needed), locale.formattedDataSize(available)) +
           u' ' + nothingReplaced;
  }
  if (!reason.isEmpty())
    return reason + u'\n' + nothingReplaced;
  return QObject::tr("The password does not open the entries that would replace existing files.") +
         u' ' + nothingReplaced;
}
