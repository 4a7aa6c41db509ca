#include "app/CompressOnDrop.h"

#include "app/OnDropSwitches.h"
#include "app/OnDropUi.h"
#include "create/CollisionRule.h"
#include "create/CompressionJob.h"
#include "engine/ArchiveCommands.h"
#include "engine/LiteralNames.h"
#include "engine/PathText.h"
#include "engine/ToolLeftovers.h"
#include "engine/ToolLocations.h"
#include "engine/ToolProblem.h"
#include "platform/PreferencesStore.h"
#include "platform/ToolRunner.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

using LiteralNames::fileArgument;

using CollisionRule::occupied;

}  // namespace

OnDropRequest OnDropRequest::fromPreferences(const QString& archiveFile, const QStringList& dropped,
                                             bool excludeDsStore) {
  OnDropRequest request;
  request.archiveFile = archiveFile;
  request.droppedFilesToCompress = dropped;
  request.method = PreferencesStore::text(QStringLiteral("onDropCompressionMethod"));
  request.level = PreferencesStore::text(QStringLiteral("onDropCompressionLevel"));
  request.firstNameIsArchiveName =
      PreferencesStore::isYes(QStringLiteral("prefUseFisrstNameOfTheArrayAsArchiveName"));
  request.excludeDsStore = excludeDsStore;
  return request;
}

CompressOnDrop::CompressOnDrop(OnDropRequest request, ToolRunner& runner, OnDropUi& ui)
    : request_(std::move(request)), runner_(runner), ui_(ui) {}

QString CompressOnDrop::genRandStringLengthInAppController(int length) {
  return CompressionJob::genRandStringLength(length);
}

void CompressOnDrop::run() {
  ui_.showCompressingWindow();
  ui_.setCompressionSpinning(true);
  const QString extension = OnDropSwitches::extensionFor(request_.method);
  // The preferences repair the method at launch; a store edited since
  // then makes nothing.
  if (extension.isEmpty()) {
    ui_.reportFailure(QStringLiteral("Unknown compression method \"%1\"; nothing was compressed.")
                          .arg(request_.method));
    ui_.setCompressionSpinning(false);
    return;
  }
  folder_ = PathText::deletingLastPathComponent(request_.archiveFile);
  archiveName_ = freeBase(baseName(), extension) + extension;
  ui_.setCompressingArchiveName(archiveName_);

  const CompressionLevel& level = OnDropSwitches::levelFor(request_.level);
  const QStringList& files = request_.droppedFilesToCompress;
  ui_.setProgressRange(static_cast<int>(files.size()), 0);
  if (toolTakesEveryName()) {
    for (int i = 0; i < files.size(); ++i) {
      compress(files[i], level);
      ui_.setProgressValue(i + 1);
    }
  }
  // The progress window of the other methods stays up until Quillet ends.
  if (!OnDropSwitches::sevenZipType(request_.method).isEmpty()) {
    ui_.setCompressionSpinning(false);
    ui_.hideCompressingWindow();
  }
  ui_.setCompressionSpinning(false);
}

void CompressOnDrop::btnCancelCompression() {
  runCancelled_ = true;
  runner_.cancel();
}

// The name keeps the extension it has: report.pdf becomes report.pdf.zip.
QString CompressOnDrop::baseName() const {
  const QString named = request_.firstNameIsArchiveName ? request_.droppedFilesToCompress.value(0)
                                                        : request_.archiveFile;
  return PathText::lastPathComponent(named);
}

QString CompressOnDrop::freeBase(const QString& base, const QString& extension) {
  if (!CollisionRule::taken(request_.archiveFile, inFolder(base + extension)))
    return base;
  ui_.alert(QStringLiteral("File with same name already exists"),
            QStringLiteral("An additional suffix will be added to the name"));
  return CollisionRule::suffixed(
      base, genRandStringLengthInAppController,
      [&](const QString& candidate) { return occupied(inFolder(candidate + extension)); });
}

bool CompressOnDrop::toolTakesEveryName() {
  QString program;
  if (request_.method == OnDropSwitches::kRar)
    program = ToolLocations::rarCompressor();
  else if (request_.method == OnDropSwitches::kArj)
    program = ToolLocations::arj();
  else
    return true;
  const QString unsafe = LiteralNames::firstUnsafe(
      program, request_.droppedFilesToCompress + QStringList{fileArgument(archiveName_)});
  if (unsafe.isEmpty())
    return true;
  const LiteralNames::Refusal refusal = LiteralNames::refusalOf(unsafe);
  ui_.alert(refusal.title, refusal.message);
  return false;
}

void CompressOnDrop::compress(const QString& file, const CompressionLevel& level) {
  const QString& method = request_.method;
  const QString archive = fileArgument(archiveName_);
  if (method == OnDropSwitches::kRar) {
    runTool(ToolLocations::rarCompressor(), QStringList{"a", archive, fileArgument(file)} +
                                                excluding("-x*DS_Store") +
                                                QStringList{level.rar, "-ep1"});
  } else if (method == OnDropSwitches::kArj) {
    runTool(ToolLocations::arj(), QStringList{"a", "-y", level.arj} +
                                      ArchiveCommands::arjRecursion(file) +
                                      QStringList{archive, fileArgument(file)});
  } else if (method == OnDropSwitches::kLha) {
    runTool(ToolLocations::lha(), {"a", level.lha, archive, fileArgument(file)});
  } else {
    runTool(ToolLocations::sevenZip(),
            LiteralNames::forSevenZip(
                QStringList{"a", OnDropSwitches::sevenZipType(method)} + excluding("-xr!.DS_Store"),
                {archive, file}, {level.sevenZip, "-ssc"}));
  }
}

void CompressOnDrop::runTool(const QString& program, const QStringList& arguments) {
  if (programMissing_)
    return;
  ToolRun run{program, arguments};
  run.childDirectory = folder_;
  run.acceptsUserInput = true;
  const QString archive = inFolder(archiveName_);
  const bool archiveExisted = occupied(archive);
  const ToolLeftovers leftovers(archive);
  runCancelled_ = false;
  const ToolResult result = runner_.run(run);
  const std::optional<ToolProblem> problem = ToolProblem::of(run, result);
  if (!problem)
    return;
  leftovers.removeNew();
  // A run that was stopped may leave the archive it began half written,
  // which the next file's run could not add to.
  if (!archiveExisted && (runCancelled_ || result.crashed))
    QFile::remove(archive);
  if (problem->kind == ToolProblem::Kind::MissingProgram) {
    programMissing_ = true;
    ui_.alert(QStringLiteral("Missing program"), problem->message);
    return;
  }
  if (!runCancelled_)
    ui_.reportFailure(problem->message);
}

QStringList CompressOnDrop::excluding(const QString& pattern) const {
  return request_.excludeDsStore ? QStringList{pattern} : QStringList{};
}

QString CompressOnDrop::inFolder(const QString& name) const {
  return QDir(folder_).absoluteFilePath(name);
}
