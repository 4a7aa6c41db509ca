#include "create/CompressionJob.h"

#include "create/CollisionRule.h"
#include "create/JobUi.h"
#include "create/TextFile.h"
#include "create/TreeCopy.h"
#include "engine/ArchiveCommands.h"
#include "engine/LiteralNames.h"
#include "engine/PathText.h"
#include "engine/ToolLeftovers.h"
#include "engine/ToolLocations.h"
#include "engine/ToolProblem.h"
#include "platform/ToolRunner.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QThread>

#include <cstdlib>

namespace {

constexpr int kBlinks = 4;
constexpr int kBlinkPauseMs = 50;

using LiteralNames::fileArgument;

// jlha stores names in Latin-1 only; anything else turns into "?".
bool isLatin1(const QString& name) {
  return std::all_of(name.cbegin(), name.cend(), [](QChar c) { return c.unicode() < 0x100; });
}

// The file 7za writes for a bare archive name: it adds the type's extension
// only to a name without a dot, and drops a final dot.
QString sevenZipWrites(const QString& name, const QString& typeExtension) {
  if (!name.contains(u'.'))
    return name + typeExtension;
  return name.endsWith(u'.') ? name.chopped(1) : name;
}

}  // namespace

CompressionJob::CompressionJob(CompressionRequest request, ToolRunner& runner, JobUi& ui,
                               std::function<bool()> cancelled)
    : request_(std::move(request)),
      settings_(request_.settings),
      runner_(runner),
      ui_(ui),
      cancelled_(std::move(cancelled)),
      folder_(request_.startFolder) {}

QString CompressionJob::genRandStringLength(int length) {
  static const QString letters =
      QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789");
  QString text;
  for (int i = 0; i < length; ++i)
    text += letters[static_cast<qsizetype>(static_cast<unsigned>(std::rand()) % letters.size())];
  return text;
}

void CompressionJob::run() {
  ui_.orderOutCreateWindow();
  ui_.setCompressionSpinning(true);
  settleName();
  const QString itemFolder = PathText::deletingLastPathComponent(request_.itemToCompress);
  if (!itemFolder.isEmpty())
    folder_ = inFolder(itemFolder);
  if (request_.everyItem) {
    const QString chosen = ui_.chooseArchivesFolder();
    if (chosen.isEmpty())
      return;
    folder_ = chosen;
  }
  if (request_.passwordProtected) {
    if (checkPassword())
      runProtected(QStringLiteral("-p") + request_.password);
    return;
  }
  runUnprotected();
}

void CompressionJob::settleName() {
  const QString base = freeBase(PathText::lastPathComponent(request_.itemToCompress),
                                inFolder(request_.itemToCompress));
  settings_.splitVolumesSize = QStringLiteral("-v");
  archiveName_ = base + JobSettings::extensionFor(settings_.compressionMethod);
  ui_.setCompressingArchiveName(archiveName_);
}

// The collision rule: a name that an archive of any type in the folder (or
// the file the tool will write) already has gets a random suffix, and the
// user is told, so that no file is replaced or added to.
QString CompressionJob::freeBase(const QString& base, const QString& path, const QString& written) {
  if (!CollisionRule::taken(path, written))
    return base;
  ui_.alert(QStringLiteral("File with same name already exists"),
            QStringLiteral("An additional suffix will be added to the name"));
  // The suffixed name is checked in the same folder, by the same measure.
  const QString folder = PathText::deletingLastPathComponent(path) + u'/';
  const QString writtenExtension = written.mid(path.size());
  return CollisionRule::suffixed(base, genRandStringLength, [&](const QString& candidate) {
    return written.isEmpty() ? CollisionRule::taken(folder + candidate)
                             : CollisionRule::occupied(folder + candidate + writtenExtension);
  });
}

bool CompressionJob::checkPassword() {
  if (request_.password == request_.passwordConfirmation)
    return true;
  // No alert: the options window blinks and the job ends.
  for (int i = 0; i < kBlinks; ++i) {
    ui_.toggleCreateWindow();
    QThread::msleep(kBlinkPauseMs);
  }
  ui_.bringCreateWindowForwardIfHidden();
  return false;
}

void CompressionJob::runProtected(const QString& passwordSwitch) {
  ui_.showCompressingWindow();
  if (toolTakesEveryName())
    compressProtected(passwordSwitch);
  reportCreated();
  // A protected archive is never uploaded, and the spinner keeps turning.
  ui_.hideCompressingWindow();
}

void CompressionJob::compressProtected(const QString& passwordSwitch) {
  if (settings_.compressionMethod == JobSettings::kRar) {
    ui_.setFileContent(QStringLiteral("Compressing to rar... Please wait...\n\n"));
    rarRows(passwordSwitch, true);
    rarNoteStep();
  } else {
    sevenZipRows({QStringLiteral("a"), passwordSwitch, settings_.compressionMethod});
    sfxStep();
    splitStep();
  }
}

void CompressionJob::runUnprotected() {
  ui_.showCompressingWindow();
  if (toolTakesEveryName())
    compressUnprotected();
  endStep();
}

void CompressionJob::compressUnprotected() {
  const QString& method = settings_.compressionMethod;
  if (method == JobSettings::kRar) {
    ui_.setFileContent(QStringLiteral("Compressing to rar... Please wait...\n\n"));
    rarRows(QString(), false);
    rarSplitStep();
    rarNoteStep();
  } else if (method == JobSettings::kGzip || method == JobSettings::kBzip2) {
    gzipOrBzip2();
  } else if (method == JobSettings::kArj) {
    eachRow([this](const QString& item) {
      if (request_.everyItem)
        archiveName_ = itemArchiveName(item, QStringLiteral(".arj"));
      if (runTool(ToolLocations::arj(), QStringList{"a", "-y", settings_.arjCompressionLevel} +
                                            ArchiveCommands::arjRecursion(item) +
                                            QStringList{fileArgument(archiveName_), item}))
        noteMade(archiveName_);
    });
  } else if (method == JobSettings::kLha) {
    eachRow([this](const QString& item) {
      if (request_.everyItem)
        archiveName_ = itemArchiveName(item, QStringLiteral(".lha"));
      if (runTool(ToolLocations::lha(),
                  {"a", settings_.lhaCompressionLevel, fileArgument(archiveName_), item}))
        noteMade(archiveName_);
    });
  } else {
    sevenZipRows({QStringLiteral("a"), method});
    sfxStep();
    splitStep();
  }
}

// The names are checked before any tool runs, so that a refused job makes
// nothing at all.
bool CompressionJob::toolTakesEveryName() {
  const QString& method = settings_.compressionMethod;
  if (method == JobSettings::kLha)
    return lhaCanStoreEveryName();
  if (method == JobSettings::kRar)
    return takesEveryNameLiterally(ToolLocations::rarCompressor());
  if (method == JobSettings::kArj)
    return takesEveryNameLiterally(ToolLocations::arj());
  return true;
}

// rar and arj expand wildcards and read list files in the names they are
// given, and no switch turns that off.
bool CompressionJob::takesEveryNameLiterally(const QString& program) {
  const QString unsafe =
      LiteralNames::firstUnsafe(program, request_.items + QStringList{fileArgument(archiveName_)});
  if (unsafe.isEmpty())
    return true;
  const LiteralNames::Refusal refusal = LiteralNames::refusalOf(unsafe);
  ui_.alert(refusal.title, refusal.message);
  return false;
}

// One tool run per row, the row selected and the progress advanced after
// it; the loop ends when the job is cancelled or a program is missing.
void CompressionJob::eachRow(const std::function<void(const QString& item)>& runItem) {
  ui_.setProgressRange(static_cast<int>(request_.items.size()), 0);
  for (int row = 0; row < request_.items.size(); ++row) {
    ui_.selectRow(row);
    runItem(request_.items[row]);
    ui_.setProgressValue(row + 1);
    if (cancelled_() || programMissing_)
      break;
  }
}

// One item's own archive: the item's name without its extension, free in
// the folder the archive goes to. An empty extension is 7za's way: it adds
// the type's own.
QString CompressionJob::itemArchiveName(const QString& item, const QString& extension) {
  const QString base = PathText::deletingPathExtension(PathText::lastPathComponent(item));
  const QString written =
      extension.isEmpty()
          ? sevenZipWrites(base, JobSettings::extensionFor(settings_.compressionMethod))
          : base + extension;
  return freeBase(base, inFolder(base), inFolder(written)) + extension;
}

QStringList CompressionJob::excluding(const QString& pattern) const {
  return request_.excludeDsStore ? QStringList{pattern} : QStringList{};
}

void CompressionJob::rarRows(const QString& passwordSwitch, bool perItemFolders) {
  const QString extension = JobSettings::extensionFor(JobSettings::kRar);
  const QString base = archiveName_.chopped(extension.size());
  // Protected rar archives go beside each item, so the name is made free in
  // every folder they go to, once.
  QHash<QString, QString> nameInFolder;
  eachRow([&](const QString& item) {
    if (perItemFolders) {
      folder_ = PathText::deletingLastPathComponent(item);
      if (!nameInFolder.contains(folder_))
        nameInFolder.insert(folder_, freeBase(base, inFolder(base)) + extension);
      archiveName_ = nameInFolder.value(folder_);
    } else if (request_.everyItem) {
      archiveName_ = itemArchiveName(item, extension);
    }
    QStringList arguments = {QStringLiteral("a")};
    if (!passwordSwitch.isEmpty())
      arguments << passwordSwitch;
    arguments << fileArgument(archiveName_) << item << excluding(QStringLiteral("-x*DS_Store"))
              << settings_.rarCompressionLevel << QStringLiteral("-ep1");
    if (runTool(ToolLocations::rarCompressor(), arguments))
      noteMade(archiveName_);
  });
}

// The volume switch is set with the fields' size for the split step.
void CompressionJob::sevenZipRows(const QStringList& leading) {
  settings_.splitVolumesSize =
      QStringLiteral("-v") + request_.splitSizeText + settings_.splitVolumesSizeType;
  // A protected job puts every item into one archive, in the chosen folder.
  if (request_.everyItem && request_.passwordProtected)
    settleSharedNameInChosenFolder();
  eachRow([&](const QString& item) {
    // 7za adds the type's own extension to a name that has none.
    if (request_.everyItem && !request_.passwordProtected)
      archiveName_ = itemArchiveName(item, QString());
    if (runTool(ToolLocations::sevenZip(),
                LiteralNames::forSevenZip(leading + excluding(QStringLiteral("-xr!.DS_Store")),
                                          {fileArgument(archiveName_), item},
                                          {settings_.zipCompressionLevel, QStringLiteral("-ssc")})))
      noteMade(
          sevenZipWrites(archiveName_, JobSettings::extensionFor(settings_.compressionMethod)));
  });
}

void CompressionJob::settleSharedNameInChosenFolder() {
  const QString extension = JobSettings::extensionFor(settings_.compressionMethod);
  const QString base = archiveName_.chopped(extension.size());
  archiveName_ = freeBase(base, inFolder(base)) + extension;
}

void CompressionJob::gzipOrBzip2() {
  QString tarName = archiveName_;
  // Only a tar this run makes may be deleted once it is compressed.
  QStringList newTars;
  eachRow([&](const QString& item) {
    if (request_.everyItem)
      tarName = itemArchiveName(item, QStringLiteral(".tar"));
    if (!QFileInfo::exists(inFolder(tarName)))
      newTars << tarName;
    if (runTool(
            ToolLocations::sevenZip(),
            LiteralNames::forSevenZip(QStringList{QStringLiteral("a"), QStringLiteral("-ttar")} +
                                          excluding(QStringLiteral("-xr!.DS_Store")),
                                      {fileArgument(tarName), item}, {QStringLiteral("-ssc")})))
      noteMade(tarName);
  });
  // Only the last tar is compressed; with one archive per item the others
  // stay plain tars.
  const QString& method = settings_.compressionMethod;
  const QString compressed =
      tarName + (method == JobSettings::kGzip ? QStringLiteral(".gz") : QStringLiteral(".bz2"));
  ui_.setProgressRange(2, 1);
  if (runTool(ToolLocations::sevenZip(),
              LiteralNames::forSevenZip({QStringLiteral("a"), method},
                                        {fileArgument(compressed), fileArgument(tarName)},
                                        {settings_.zipCompressionLevel, QStringLiteral("-ssc")})) &&
      QFileInfo::exists(inFolder(compressed))) {
    replaceMade(tarName, {inFolder(compressed)});
    if (newTars.contains(tarName))
      QFile::remove(inFolder(tarName));
  }
  archiveName_ = tarName;
}

void CompressionJob::rarSplitStep() {
  if (!request_.split)
    return;
  // rar volumes are always counted in kilobytes.
  settings_.splitVolumesSize = QStringLiteral("-v") + request_.splitSizeText + u'k';
  ui_.setProgressIndeterminate();
  ui_.setStatus(QStringLiteral("Splitting archive..."));
  const QStringList before = namedAfterArchive();
  if (runTool(ToolLocations::rarCompressor(),
              {QStringLiteral("a"), fileArgument(archiveName_ + QStringLiteral(".split")),
               fileArgument(archiveName_), QStringLiteral("-ep1"), QStringLiteral("-m0"),
               settings_.splitVolumesSize})) {
    QFile::remove(inFolder(archiveName_));
    replaceMade(archiveName_, newVolumes(before));
  }
}

void CompressionJob::rarNoteStep() {
  if (request_.notes.isEmpty() || programMissing_)
    return;
  const QString note = request_.homeFolder + QStringLiteral("/note.tmp");
  if (!TextFile::write(note, request_.notes, QStringConverter::Utf8))
    return;
  runTool(ToolLocations::rarCompressor(),
          {QStringLiteral("c"), fileArgument(archiveName_), QStringLiteral("-z") + note});
  QFile::remove(note);
}

void CompressionJob::sfxStep() {
  if (!request_.selfExtracting || programMissing_)
    return;
  const QString application =
      PathText::deletingPathExtension(archiveName_) + QStringLiteral(".app");
  const QString bundle = inFolder(application);
  const QString failure =
      QStringLiteral("The self-extracting archive %1 could not be made").arg(bundle);
  const bool taken = QFileInfo::exists(bundle);
  if (!TreeCopy::copy(request_.stubBundle, bundle)) {
    // Only a partial copy of this run's own is removed.
    if (!taken)
      QDir(bundle).removeRecursively();
    failStep(failure);
    return;
  }
  const QString resources = PathText::deletingLastPathComponent(request_.itemToCompress) + u'/' +
                            application + QStringLiteral("/Contents/Resources");
  const QString slot = resources + QStringLiteral("/archive");
  // Only the slot of the bundle just made may be emptied.
  if (QFileInfo(slot).absoluteFilePath().startsWith(QFileInfo(bundle).absoluteFilePath() + u'/'))
    QFile::remove(slot);
  if (!QFile::rename(inFolder(archiveName_), slot)) {
    QDir(bundle).removeRecursively();
    failStep(failure);
    return;
  }
  replaceMade(archiveName_, {bundle});
  TextFile::write(resources + QStringLiteral("/notes.txt"), request_.notes,
                  QStringConverter::Utf16);
}

void CompressionJob::splitStep() {
  if (!request_.split || programMissing_)
    return;
  ui_.setProgressIndeterminate();
  ui_.setStatus(QStringLiteral("Splitting archive..."));
  const QStringList before = namedAfterArchive();
  if (runTool(ToolLocations::sevenZip(),
              LiteralNames::forSevenZip({QStringLiteral("a"), settings_.compressionMethod},
                                        {fileArgument(archiveName_ + QStringLiteral(".part")),
                                         fileArgument(archiveName_)},
                                        {QStringLiteral("-ssc"), settings_.splitVolumesSize}))) {
    QFile::remove(inFolder(archiveName_));
    replaceMade(archiveName_, newVolumes(before));
  }
}

void CompressionJob::endStep() {
  ui_.setCompressionSpinning(false);
  ui_.hideCompressingWindow();
  reportCreated();
  if (request_.upload)
    ui_.uploadFileToFTP(archiveName_, folder_);
}

bool CompressionJob::lhaCanStoreEveryName() {
  QStringList unstorable;
  for (const QString& item : request_.items) {
    if (!isLatin1(PathText::lastPathComponent(item)))
      unstorable << item;
    QDirIterator inside(item, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                        QDirIterator::Subdirectories);
    while (inside.hasNext()) {
      const QString path = inside.next();
      if (!isLatin1(inside.fileName()))
        unstorable << path;
    }
  }
  if (unstorable.isEmpty())
    return true;
  ui_.alert(QStringLiteral("Names LHA cannot store"),
            QStringLiteral("LHA archives store names in Latin-1 only; these names would be lost "
                           "or collide, so no archive was made:\n\n%1")
                .arg(unstorable.join(u'\n')));
  return false;
}

bool CompressionJob::runTool(const QString& program, const QStringList& arguments) {
  if (programMissing_)
    return false;
  ToolRun run{program, arguments};
  run.childDirectory = folder_;
  const ToolLeftovers leftovers(inFolder(archiveName_));
  const ToolResult result = runner_.run(run);
  const std::optional<ToolProblem> problem = ToolProblem::of(run, result);
  if (!problem)
    return true;
  leftovers.removeNew();
  if (problem->kind == ToolProblem::Kind::MissingProgram) {
    programMissing_ = true;
    ui_.alert(QStringLiteral("Missing program"), problem->message);
    return false;
  }
  toolFailed_ = true;
  if (!cancelled_())
    ui_.reportFailure(
        problem->message,
        QString::fromLocal8Bit(result.errors.isEmpty() ? result.output : result.errors));
  return false;
}

void CompressionJob::noteMade(const QString& name) {
  const QString path = inFolder(name);
  if (!made_.paths.contains(path))
    made_.paths << path;
}

void CompressionJob::replaceMade(const QString& made, const QStringList& paths) {
  const qsizetype at = made_.paths.indexOf(inFolder(made));
  if (at < 0)
    return;
  const bool onlyArchive = made_.paths.size() == 1;
  made_.paths.remove(at);
  for (qsizetype i = 0; i < paths.size(); ++i)
    made_.paths.insert(at + i, paths[i]);
  made_.volumes = made_.volumes || (onlyArchive && paths.size() > 1);
}

// Matched by hand, since the archive's name may hold wildcard characters.
QStringList CompressionJob::namedAfterArchive() const {
  const QString prefix = PathText::lastPathComponent(archiveName_) + u'.';
  const QDir folder(PathText::deletingLastPathComponent(inFolder(archiveName_)));
  QStringList paths;
  for (const QString& entry : folder.entryList(QDir::Files | QDir::Hidden, QDir::Name)) {
    if (entry.startsWith(prefix))
      paths << folder.absoluteFilePath(entry);
  }
  return paths;
}

QStringList CompressionJob::newVolumes(const QStringList& before) const {
  QStringList volumes = namedAfterArchive();
  volumes.removeIf([&before](const QString& path) { return before.contains(path); });
  return volumes;
}

void CompressionJob::failStep(const QString& message) {
  toolFailed_ = true;
  ui_.reportFailure(message, QString());
}

// Only a job that ran to its end with every tool content says what it made.
void CompressionJob::reportCreated() {
  if (toolFailed_ || programMissing_ || cancelled_() || made_.paths.isEmpty())
    return;
  ui_.reportCreated(made_);
}

QString CompressionJob::inFolder(const QString& name) const {
  return QDir(folder_).absoluteFilePath(name);
}
