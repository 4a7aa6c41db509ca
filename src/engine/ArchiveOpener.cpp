#include "engine/ArchiveOpener.h"

#include "app/PreferencesStore.h"
#include "engine/ArchiveChecksum.h"
#include "engine/ArchiveType.h"
#include "engine/OpeningWindow.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/ToolLocations.h"
#include "engine/listing/ArjListing.h"
#include "engine/listing/RarListing.h"
#include "engine/listing/SltListing.h"

#include <QDir>

namespace {

QString macosxFolder() {
  return QStringLiteral("__MACOSX");
}

}  // namespace

ArchiveOpener::ArchiveOpener(ToolRunner& runner, EntryIcons& icons, OpeningWindow& window)
    : runner_(runner), icons_(icons), window_(window) {}

void ArchiveOpener::open(const QString& path) {
  window_.startSpinner();
  record(path);
  window_.noteRecentDocument(path);
  QDir::setCurrent(PathText::deletingLastPathComponent(path));

  const Probe probe = probePassword();
  if (probe == Probe::ProgramMissing) {
    window_.stopSpinner();
    return;
  }
  if (probe == Probe::Protected && !window_.passwordPanelVisible()) {
    window_.showPasswordPanel();
    window_.stopSpinner();
    return;
  }
  archive_.archivePass = OpenedArchive::kNoPassword;
  if (PreferencesStore::isYes(PreferencesStore::kAutoremoveMacosxFolder))
    deleteFileFromArchiveWithName(macosxFolder());
  fillListBoxWithArchiveContent();
  window_.stopSpinner();
}

void ArchiveOpener::record(const QString& path) {
  archive_.crc32 = ArchiveChecksum::crc32Of(path);
  archive_.filename = PathText::lastPathComponent(path);
  archive_.filepath = path;
  archive_.filesize = SizeText::archiveFile(path);
  archive_.archivetype = ArchiveType::ofPath(path);
  window_.showArchive(archive_);
}

ArchiveOpener::Probe ArchiveOpener::probePassword() {
  const QString& type = archive_.archivetype;
  ToolRun run;
  QByteArrayView mark;
  if (type == ArchiveType::Rar) {
    run = {ToolLocations::unrar(), {QStringLiteral("l"), archive_.filepath}};
    mark = "*";
  } else if (type == ArchiveType::Zip || type == ArchiveType::SevenZip) {
    run = {ToolLocations::sevenZip(),
           {QStringLiteral("l"), QStringLiteral("-slt"), archive_.filepath}};
    mark = "Encrypted = +";
  } else {
    return Probe::Clear;
  }
  // A failing probe is not worth a word: the listing that follows says it.
  const std::optional<ToolResult> result = runTool(run, false);
  if (!result)
    return Probe::ProgramMissing;
  const QByteArray& output = result->outputIsUtf8() ? result->output : QByteArray();
  const bool asksForPassword =
      containsNoCase(output, mark) ||
      (type != ArchiveType::Rar && containsNoCase(output, "Enter password"));
  return asksForPassword ? Probe::Protected : Probe::Clear;
}

void ArchiveOpener::passwordEntered(const QString& password) {
  archive_.archivePass = QStringLiteral("-p") + password;
  if (window_.passwordPanelVisible())
    window_.hidePasswordPanel();
  fillListBoxWithArchiveContent();
}

void ArchiveOpener::passwordPanelClosed() {
  if (window_.passwordPanelVisible())
    window_.hidePasswordPanel();
}

void ArchiveOpener::fillListBoxWithArchiveContent() {
  window_.startSpinner();
  const QString& type = archive_.archivetype;
  const QString& path = archive_.filepath;
  const QString& pass = archive_.archivePass;
  const QString list = QStringLiteral("l");

  ToolRun run;
  if (type == ArchiveType::Rar)
    run = {ToolLocations::rarCompressor(), {list, pass, path}};
  else if (type == ArchiveType::Arj)
    run = {ToolLocations::arj(), {list, path}};
  else if (type == ArchiveType::Lha)
    run = {ToolLocations::lha(), {QStringLiteral("v"), path}};
  else if (type == ArchiveType::Zip || type == ArchiveType::Tar || type == ArchiveType::SevenZip)
    run = {ToolLocations::sevenZip(), {list, pass, path, QStringLiteral("-slt")}};
  else {
    window_.stopSpinner();
    return;
  }

  const std::optional<ToolResult> result = runTool(run);
  const OutputLines lines(result && result->outputIsUtf8() ? result->output : QByteArray());
  ArchiveEntries rows;
  if (type == ArchiveType::Rar)
    rows = parseRarListing(lines, icons_);
  else if (type == ArchiveType::Arj)
    rows = parseArjListing(lines, icons_);
  else if (type == ArchiveType::Lha)
    rows = parseLhaListing(lines, lhaVersion(), icons_);
  else if (type == ArchiveType::Zip)
    rows = parseSltListing(lines, SltType::Zip, icons_);
  else if (type == ArchiveType::Tar)
    rows = parseSltListing(lines, SltType::Tar, icons_);
  else
    rows = parseSltListing(lines, SltType::SevenZip, icons_);
  window_.showRows(rows);
  window_.stopSpinner();
}

void ArchiveOpener::deleteFileFromArchiveWithName(const QString& name) {
  const QString& type = archive_.archivetype;
  const QString& path = archive_.filepath;
  const QString remove = QStringLiteral("d");
  ToolRun run;
  if (type == ArchiveType::Rar)
    run = {ToolLocations::rarCompressor(), {remove, archive_.archivePass, path, name}};
  else if (type == ArchiveType::Arj)
    run = {ToolLocations::arj(), {remove, path, PathText::lastPathComponent(name)}};
  else
    run = {ToolLocations::sevenZip(), {remove, archive_.archivePass, path, name}};
  runTool(run);
}

std::optional<ToolResult> ArchiveOpener::runTool(const ToolRun& run, bool reportFailure) {
  ToolResult result = runner_.run(run);
  const std::optional<ToolProblem> problem = ToolProblem::of(run, result);
  if (problem && problem->kind == ToolProblem::Kind::MissingProgram) {
    window_.reportProblem(*problem);
    return std::nullopt;
  }
  if (problem && reportFailure)
    window_.reportProblem(*problem);
  return result;
}

LhaVersion ArchiveOpener::lhaVersion() {
  if (!lhaVersion_) {
    const ToolResult usage = runner_.run({ToolLocations::lha(), {}});
    lhaVersion_ = lhaVersionFromUsage(usage.output + usage.errors);
  }
  return *lhaVersion_;
}
