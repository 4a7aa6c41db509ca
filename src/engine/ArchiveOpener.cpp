#include "engine/ArchiveOpener.h"

#include "engine/ArchiveChecksum.h"
#include "engine/ArchiveCommands.h"
#include "engine/ArchiveType.h"
#include "engine/LiteralNames.h"
#include "engine/OpeningWindow.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/ToolLeftovers.h"
#include "engine/ToolLocations.h"
#include "engine/listing/ArjListing.h"
#include "engine/listing/OutputSearch.h"
#include "engine/listing/RarListing.h"
#include "engine/listing/SltListing.h"
#include "engine/listing/TarListing.h"
#include "platform/PreferencesStore.h"

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
  // A compressed tar archive cannot be changed in place.
  if (PreferencesStore::isYes(PreferencesStore::kAutoremoveMacosxFolder) &&
      !ArchiveType::isCompressedTar(archive_.archivetype))
    removeMacosxFolder();
  fillListBoxWithArchiveContent();
  window_.stopSpinner();
}

void ArchiveOpener::record(const QString& path) {
  archive_.crc32 = ArchiveChecksum::GetCRC32(path);
  archive_.filename = PathText::lastPathComponent(path);
  archive_.filepath = path;
  archive_.filesize = SizeText::archiveFile(path);
  archive_.archivetype = ArchiveType::ofOpenedPath(path);
  window_.showArchive(archive_);
}

ArchiveOpener::Probe ArchiveOpener::probePassword() {
  archive_.encrypted = false;
  const QString& type = archive_.archivetype;
  ToolRun run;
  QByteArrayView mark;
  if (type == ArchiveType::Rar) {
    run = {ToolLocations::unrar(), {QStringLiteral("l"), archive_.filepath}};
    mark = "*";
  } else if (type == ArchiveType::Zip || type == ArchiveType::SevenZip) {
    run = {ToolLocations::sevenZip(),
           LiteralNames::forSevenZip({QStringLiteral("l"), QStringLiteral("-slt")},
                                     {archive_.filepath})};
    mark = "Encrypted = +";
  } else {
    return Probe::Clear;
  }
  // 7-Zip asks for the password of an archive whose headers are encrypted
  // instead of listing anything.
  QList<QByteArray> marks = {mark.toByteArray()};
  if (type != ArchiveType::Rar)
    marks << QByteArrayLiteral("Enter password");
  OutputSearch search(marks);
  run.outputSink = [&search](QByteArrayView chunk) { search.append(chunk); };
  // A failing probe is not worth a word: the listing that follows says it.
  if (!runTool(run, false))
    return Probe::ProgramMissing;
  search.finish();
  archive_.encrypted = search.found();
  return archive_.encrypted ? Probe::Protected : Probe::Clear;
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
  if (const std::optional<ToolRun> run = listingRun()) {
    const std::optional<SltType> technical = sltTypeOf(archive_.archivetype);
    window_.showRows(technical ? listWhileToolPrints(*run, *technical) : listFromWholeOutput(*run));
  }
  window_.stopSpinner();
}

std::optional<ToolRun> ArchiveOpener::listingRun() const {
  const QString& type = archive_.archivetype;
  const QString& path = archive_.filepath;
  const QString& pass = archive_.archivePass;
  const QString list = QStringLiteral("l");
  if (type == ArchiveType::Rar)
    return ToolRun{ToolLocations::rarCompressor(), {list, pass, path}};
  if (type == ArchiveType::Arj)
    return ToolRun{ToolLocations::arj(), {list, path}};
  if (type == ArchiveType::Lha)
    return ToolRun{ToolLocations::lha(), {QStringLiteral("v"), path}};
  if (ArchiveType::isCompressedTar(type))
    return ArchiveCommands::compressedTarListing(path);
  if (sltTypeOf(type))
    return ToolRun{ToolLocations::sevenZip(),
                   LiteralNames::forSevenZip({list, pass}, {path}, {QStringLiteral("-slt")})};
  return std::nullopt;
}

std::optional<SltType> ArchiveOpener::sltTypeOf(const QString& type) {
  if (type == ArchiveType::Zip)
    return SltType::Zip;
  if (type == ArchiveType::Tar)
    return SltType::Tar;
  if (type == ArchiveType::SevenZip)
    return SltType::SevenZip;
  return std::nullopt;
}

ArchiveEntries ArchiveOpener::listFromWholeOutput(const ToolRun& run) {
  const std::optional<ToolResult> result = runTool(run);
  const OutputLines lines(result ? result->output : QByteArray());
  if (!lines.isUtf8()) {
    window_.reportProblem(ToolProblem::namesNotUtf8(run));
    return {};
  }
  const QString& type = archive_.archivetype;
  if (type == ArchiveType::Rar)
    return parseRarListing(lines, icons_);
  if (type == ArchiveType::Arj)
    return parseArjListing(lines, icons_);
  if (ArchiveType::isCompressedTar(type))
    return parseTarListing(result ? result->output : QByteArray(), icons_);
  return parseLhaListing(lines, lhaVersion(), icons_);
}

// 7-Zip's technical listing can be millions of lines: its records are
// parsed as they arrive, while 7-Zip is still printing.
ArchiveEntries ArchiveOpener::listWhileToolPrints(ToolRun run, SltType type) {
  OutputLines lines;
  SltListingParser parser(type, icons_);
  run.outputSink = [&](QByteArrayView chunk) {
    lines.append(chunk);
    parser.consume(lines);
  };
  runTool(run);
  lines.finish();
  ArchiveEntries rows = parser.finish(lines);
  if (lines.isUtf8())
    return rows;
  window_.reportProblem(ToolProblem::namesNotUtf8(run));
  return {};
}

void ArchiveOpener::deleteFileFromArchiveWithName(const QString& name) {
  const ToolRun run = ArchiveCommands::deleteEntry({archive_.archivetype, archive_.filepath}, name,
                                                   archive_.archivePass);
  const ToolLeftovers leftovers(archive_.filepath);
  const std::optional<ToolResult> result = runTool(run);
  if (result && !result->succeeded())
    leftovers.removeNew();
}

// The clean-up the preference asks for on every opening: a program that
// cannot change this type (RARLAB's rar, say) is worth a status line, not an
// alert each time.
void ArchiveOpener::removeMacosxFolder() {
  const ArchiveCommands::Archive archive{archive_.archivetype, archive_.filepath};
  const ToolRun run = ArchiveCommands::deleteEntry(archive, macosxFolder(), archive_.archivePass);
  if (const QString unsafe = ArchiveCommands::unsafeName(archive, run.program, {});
      !unsafe.isEmpty()) {
    window_.reportProblem({ToolProblem::Kind::Failed, LiteralNames::refusalOf(unsafe).message});
    return;
  }
  const ToolLeftovers leftovers(archive_.filepath);
  const ToolResult result = runner_.run(run);
  if (std::optional<ToolProblem> problem = ToolProblem::of(run, result)) {
    leftovers.removeNew();
    problem->kind = ToolProblem::Kind::Failed;
    window_.reportProblem(*problem);
  }
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
  if (!lhaVersion_)
    lhaVersion_ = probeLhaVersion(runner_);
  return *lhaVersion_;
}
