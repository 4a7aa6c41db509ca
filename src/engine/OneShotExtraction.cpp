#include "engine/OneShotExtraction.h"

#include "engine/ArchiveCommands.h"
#include "engine/ArchiveType.h"
#include "engine/EscapingLinks.h"
#include "engine/ExtractionGuard.h"
#include "engine/FileRemoval.h"
#include "engine/LiteralNames.h"
#include "engine/PathText.h"
#include "engine/ToolLocations.h"
#include "engine/ToolProblem.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/PreferencesStore.h"

#include <QDateTime>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

namespace {

using Route = OneShotExtraction::Route;
using AfterStep = OneShotExtraction::AfterStep;

const QString kOk = QStringLiteral("OK");

// The types whose listing 7-Zip probes and which it extracts by full path.
bool isProbedBySevenZip(const QString& type) {
  return type == ArchiveType::Zip || type == ArchiveType::SevenZip ||
         type == ArchiveType::FirstVolume;
}

QString sevenZipOverwrite(bool overwrite) {
  return overwrite ? QStringLiteral("-aoa") : QStringLiteral("-aos");
}

QString rarOverwrite(bool overwrite) {
  return overwrite ? QStringLiteral("-o+") : QStringLiteral("-o-");
}

ToolRun sevenZipExtraction(const QStringList& leading, const QString& archive, bool overwrite) {
  return {ToolLocations::sevenZip(),
          LiteralNames::forSevenZip(
              leading, {archive},
              {QStringLiteral("-ssc"), sevenZipOverwrite(overwrite), QStringLiteral("-y")})};
}

// The archive as rar and arj are given it: by full path from outside, by
// name on the quick panel.
QString nameGiven(Route route, const QString& archive) {
  return route == Route::FromOutside ? archive : PathText::lastPathComponent(archive);
}

// On the quick panel 7-Zip unpacks one layer of a bz2, so the guard lists
// what 7-Zip would write rather than what tar would.
QString typeAsUnpacked(const ToolRun& run, const QString& type) {
  const bool bzip2 = type == ArchiveType::Bz2 || type == ArchiveType::Tbz2;
  return bzip2 && run.program == ToolLocations::sevenZip() ? ArchiveType::Bzip2 : type;
}

// Without "-v" arj stops at the end of the first volume, cutting the file
// that goes on in the next one.
QStringList arjVolumes(const QString& archive, QStringList arguments) {
  if (QFileInfo::exists(ArchiveCommands::firstArjVolume(archive)))
    arguments << QStringLiteral("-v");
  return arguments;
}

}  // namespace

OneShotExtraction::Preferences OneShotExtraction::Preferences::read() {
  using PreferencesStore::isYes;
  Preferences preferences;
  preferences.openDestination = isYes(QStringLiteral("openDestinationAfterExtraction"));
  preferences.overwrite = isYes(QStringLiteral("overwriteOnExtraction"));
  preferences.playSound = isYes(QStringLiteral("playSoundWhenDone"));
  preferences.trash = isYes(QStringLiteral("trashAfterExtracting"));
  preferences.removeMacosx = isYes(PreferencesStore::kAutoremoveMacosxFolder);
  preferences.surroundingFolder = isYes(QStringLiteral("CreateSurroundingFolderBeforeExtraction"));
  return preferences;
}

OneShotExtraction::OneShotExtraction(Route route, Services services)
    : route_(route), services_(std::move(services)) {}

OneShotExtraction::Outcome OneShotExtraction::extract(const QString& archive) {
  const Preferences preferences = Preferences::read();
  const QString type = ArchiveType::ofPath(archive);
  const ToolRun extracting = extraction(route_, archive, preferences);
  const std::optional<ToolRun> probe = passwordProbe(archive);
  QStringList names = {nameGiven(route_, archive)};
  if (probe)
    names << archive;
  if (refusesNames(extracting.program, names))
    return Outcome::Refused;

  const QString& folder = extracting.directory;
  if (route_ == Route::FromOutside && preferences.surroundingFolder)
    QDir().mkpath(folder);
  // The tool would write into whatever folder Quillet was left in.
  if (!QFileInfo(folder).isDir()) {
    services_.dialogs.alert(
        QStringLiteral("Nothing extracted"),
        QStringLiteral("Quillet could not make the folder \"%1\", so nothing was extracted.")
            .arg(folder),
        kOk);
    return Outcome::Refused;
  }
  if (probe) {
    ToolRun probing = *probe;
    probing.directory = folder;
    const QString said = QString::fromUtf8(services_.runner.run(probing).output);
    if (probeFindsEncryption(type, said))
      return Outcome::NeedsPassword;
  }
  return runChecked(extracting, archive, QString(), afterSteps(route_, false, type, preferences),
                    preferences.overwrite);
}

OneShotExtraction::Outcome OneShotExtraction::extractWithPassword(const QString& archive,
                                                                  const QString& password) {
  const Preferences preferences = Preferences::read();
  const ToolRun extracting = extractionWithPassword(archive, password, preferences.overwrite);
  if (refusesNames(extracting.program, {PathText::lastPathComponent(archive)}))
    return Outcome::Refused;
  return runChecked(extracting, archive, QStringLiteral("-p") + password,
                    afterSteps(route_, true, ArchiveType::ofPath(archive), preferences),
                    preferences.overwrite);
}

bool OneShotExtraction::isQuickPanelType(const QString& extension) {
  static const QStringList types = {"zip", "7z",  "tgz", "gz",  "bz2",
                                    "tar", "rar", "001", "arj", "lha"};
  return types.contains(extension);
}

bool OneShotExtraction::isArchiveFromOutside(const QString& extension) {
  return isQuickPanelType(extension) || extension == ArchiveType::Tbz2;
}

QString OneShotExtraction::workingDirectory(Route route, const QString& archive,
                                            const Preferences& preferences) {
  if (route == Route::FromOutside && preferences.surroundingFolder)
    return PathText::deletingPathExtension(archive);
  return PathText::deletingLastPathComponent(archive);
}

std::optional<ToolRun> OneShotExtraction::passwordProbe(const QString& archive) {
  const QString type = ArchiveType::ofPath(archive);
  if (type == ArchiveType::Rar)
    return ToolRun{ToolLocations::unrar(),
                   {QStringLiteral("l"), LiteralNames::fileArgument(archive)}};
  if (isProbedBySevenZip(type))
    return ToolRun{
        ToolLocations::sevenZip(),
        LiteralNames::forSevenZip({QStringLiteral("l"), QStringLiteral("-slt")}, {archive})};
  return std::nullopt;
}

bool OneShotExtraction::probeFindsEncryption(const QString& type, const QString& output) {
  if (type == ArchiveType::Rar)
    return output.contains(u'*');
  // 7-Zip asks for the password of an archive whose headers are encrypted
  // instead of listing anything.
  return output.contains(u"Encrypted = +", Qt::CaseInsensitive) ||
         output.contains(u"Enter password");
}

ToolRun OneShotExtraction::extraction(Route route, const QString& archive,
                                      const Preferences& preferences) {
  const QString type = ArchiveType::ofPath(archive);
  const QString name = PathText::lastPathComponent(archive);
  const QString given = LiteralNames::fileArgument(nameGiven(route, archive));
  const QString fullPath = LiteralNames::fileArgument(archive);
  const bool overwrite = preferences.overwrite;
  ToolRun run;
  if (isProbedBySevenZip(type))
    run = sevenZipExtraction({QStringLiteral("x")}, nameGiven(route, archive), overwrite);
  else if (type == ArchiveType::Rar)
    run = {ToolLocations::unrar(), {"x", rarOverwrite(overwrite), "-y", given}};
  else if (type == ArchiveType::Arj)
    run = {ToolLocations::arj(), arjVolumes(archive, {"x", "-y"}) << given};
  else if (type == ArchiveType::Lha)
    run = {ToolLocations::lha(), {"x", "-f", fullPath}};
  else if (route == Route::FromOutside && (type == ArchiveType::Tbz2 || type == ArchiveType::Bz2))
    run = {ToolLocations::tar(), {"xvfj", fullPath}};
  else
    run = sevenZipExtraction({QStringLiteral("x")}, name, overwrite);
  run.directory = workingDirectory(route, archive, preferences);
  return run;
}

ToolRun OneShotExtraction::extractionWithPassword(const QString& archive, const QString& password,
                                                  bool overwrite) {
  const QString passwordSwitch = QStringLiteral("-p") + password;
  ToolRun run;
  if (ArchiveType::ofPath(archive) == ArchiveType::Rar)
    run = {ToolLocations::unrar(),
           {"x", rarOverwrite(overwrite), "-y", passwordSwitch,
            LiteralNames::fileArgument(PathText::lastPathComponent(archive))}};
  else
    run = sevenZipExtraction({QStringLiteral("x"), passwordSwitch}, archive, overwrite);
  run.directory = PathText::deletingLastPathComponent(archive);
  return run;
}

QList<AfterStep> OneShotExtraction::afterSteps(Route route, bool withPassword, const QString& type,
                                               const Preferences& preferences) {
  QList<AfterStep> steps;
  const auto step = [&steps](bool wanted, AfterStep what) {
    if (wanted)
      steps << what;
  };
  const bool rar = type == ArchiveType::Rar;
  const Preferences& p = preferences;
  if (route == Route::FromOutside && withPassword && rar) {
    step(p.openDestination, AfterStep::ShowFolder);
    step(p.playSound, AfterStep::BeepAndWait);
  } else if (route == Route::FromOutside && withPassword) {
    step(p.removeMacosx, AfterStep::RemoveMacosxFolder);
    step(p.openDestination, AfterStep::ShowFolder);
    step(p.playSound, AfterStep::Beep);
  } else if (route == Route::FromOutside && isProbedBySevenZip(type)) {
    step(p.openDestination, AfterStep::ShowFolder);
    step(p.playSound, AfterStep::BeepAndWait);
    step(p.trash, AfterStep::Trash);
    step(p.removeMacosx, AfterStep::RemoveMacosxFolder);
  } else if (route == Route::FromOutside) {
    step(p.openDestination, AfterStep::ShowFolder);
    step(p.trash, AfterStep::Trash);
    step(p.playSound, AfterStep::BeepAndWait);
  } else if (withPassword) {
    // The panel's password route never shows the folder.
    step(p.removeMacosx && !rar, AfterStep::RemoveMacosxFolder);
    step(p.playSound, AfterStep::BeepAndWait);
  } else {
    step(p.openDestination, AfterStep::ShowFolder);
    step(p.playSound, AfterStep::BeepAndWait);
    step(p.removeMacosx && isProbedBySevenZip(type), AfterStep::RemoveMacosxFolder);
  }
  return steps;
}

void OneShotExtraction::waitTurningEventLoop(std::chrono::milliseconds duration) {
  QEventLoop loop;
  QTimer::singleShot(duration, &loop, &QEventLoop::quit);
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

bool OneShotExtraction::refusesNames(const QString& program, const QStringList& names) {
  const QString unsafe = LiteralNames::firstUnsafe(program, names);
  if (unsafe.isEmpty())
    return false;
  const LiteralNames::Refusal refusal = LiteralNames::refusalOf(unsafe);
  services_.dialogs.alert(refusal.title, refusal.message, kOk);
  return true;
}

OneShotExtraction::Outcome OneShotExtraction::runChecked(ToolRun run, const QString& archive,
                                                         const QString& passwordSwitch,
                                                         const QList<AfterStep>& steps,
                                                         bool overwrite) {
  const QString type = typeAsUnpacked(run, ArchiveType::ofPath(archive));
  // A password is asked for only when the probe found encryption.
  const bool encrypted = !passwordSwitch.isEmpty();
  const ExtractionGuard guard = ExtractionGuard::check(
      services_.runner, {{type, archive}, run.directory, passwordSwitch, overwrite, encrypted, {}});
  if (guard.verdict != ExtractionGuard::Verdict::Go) {
    services_.dialogs.alert(guard.title(), guard.message(), kOk);
    return Outcome::Refused;
  }
  if (guard.collides && !overwrite)
    ArchiveCommands::keepExistingFiles(run);

  const QDateTime started = EscapingLinks::now(run.directory);
  const ToolResult result = services_.runner.run(run);
  const std::optional<ToolProblem> problem = ToolProblem::of(run, result);
  if (problem && problem->kind == ToolProblem::Kind::MissingProgram)
    services_.dialogs.alert(QStringLiteral("Missing program"), problem->message, kOk);
  else if (problem)
    services_.ui.reportFailure(problem->message);
  if (run.program == ToolLocations::tar() || run.program == ToolLocations::lha())
    removeEscapingLinks(run.directory, started);
  services_.ui.showDone();
  take(steps, archive, !problem);
  return Outcome::Done;
}

void OneShotExtraction::removeEscapingLinks(const QString& folder, const QDateTime& since) {
  const QStringList removed = EscapingLinks::removeNewerThan(folder, since);
  if (removed.isEmpty())
    return;
  QStringList names;
  for (const QString& link : removed)
    names << QDir(folder).relativeFilePath(link);
  services_.ui.reportFailure(QObject::tr("Removed %n link(s) that led outside the destination: %1",
                                         nullptr, static_cast<int>(removed.size()))
                                 .arg(names.join(QStringLiteral(", "))));
}

void OneShotExtraction::take(const QList<AfterStep>& steps, const QString& archive,
                             bool extracted) {
  const QString folder = PathText::deletingLastPathComponent(archive);
  for (const AfterStep step : steps) {
    switch (step) {
      case AfterStep::ShowFolder:
        services_.desktop.showFolder(folder);
        break;
      case AfterStep::Beep:
        services_.desktop.beep();
        break;
      case AfterStep::BeepAndWait:
        services_.desktop.beep();
        services_.wait(kBeepPause);
        break;
      case AfterStep::Trash:
        // An archive whose extraction failed stays where the user had it.
        if (extracted)
          services_.desktop.moveToTrash(archive);
        break;
      case AfterStep::RemoveMacosxFolder:
        FileRemoval::removeFileOrFolder(folder + QStringLiteral("/__MACOSX"));
        break;
    }
  }
}
