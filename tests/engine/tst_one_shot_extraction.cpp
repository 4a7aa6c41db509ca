#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "engine/FreeSpace.h"
#include "engine/OneShotExtraction.h"
#include "engine/PathText.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/TestArchives.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

Q_DECLARE_METATYPE(OneShotExtraction::Route)
Q_DECLARE_METATYPE(OneShotExtraction::Outcome)

namespace {

using Route = OneShotExtraction::Route;
using Outcome = OneShotExtraction::Outcome;
using TestArchives::contentOf;
using TestArchives::runIn;
using TestArchives::Tree;
using TestArchives::treeUnder;
using TestArchives::writeFile;

const QStringList kPreferenceKeys = {"openDestinationAfterExtraction",
                                     "overwriteOnExtraction",
                                     "playSoundWhenDone",
                                     "trashAfterExtracting",
                                     "autoremoveMACOSXfolder",
                                     "CreateSurroundingFolderBeforeExtraction"};

void setPreferences(const QStringList& yes) {
  for (const QString& key : kPreferenceKeys)
    PreferencesStore::remove(key);
  for (const QString& key : yes)
    PreferencesStore::setYes(key, true);
}

OneShotExtraction::Preferences preferences(bool overwrite, bool surroundingFolder = false) {
  OneShotExtraction::Preferences chosen;
  chosen.overwrite = overwrite;
  chosen.surroundingFolder = surroundingFolder;
  return chosen;
}

// Everything the user would see or hear, in the order it happened.
class SequenceDesktop : public FakeDesktop {
 public:
  explicit SequenceDesktop(QStringList& log) : log_(log) {}
  void showFolder(const QString& folder) override {
    FakeDesktop::showFolder(folder);
    log_ << "show " + folder;
  }
  void beep() override {
    FakeDesktop::beep();
    log_ << "beep";
  }
  bool moveToTrash(const QString& path) override {
    log_ << "trash " + path;
    return FakeDesktop::moveToTrash(path);
  }

 private:
  QStringList& log_;
};

class RecordingUi : public OneShotExtraction::Ui {
 public:
  explicit RecordingUi(QStringList& log) : log_(log) {}
  void showDone() override { log_ << "DONE"; }
  void reportFailure(const QString& message) override { failures << message; }
  QStringList failures;

 private:
  QStringList& log_;
};

// The real tools, with every run kept for a look at its vector.
class RecordingRunner : public ToolRunner {
 public:
  ToolResult run(const ToolRun& run) override {
    runs << run;
    return real_.run(run);
  }
  void cancel() override { real_.cancel(); }
  QList<ToolRun> runs;

 private:
  ProcessToolRunner real_;
};

template <typename Runner>
struct Flow {
  explicit Flow(Route route)
      : extraction(route, {runner, dialogs, desktop, ui, [this](std::chrono::milliseconds pause) {
                             log << QStringLiteral("wait %1").arg(pause.count());
                           }}) {}

  QStringList alertTitles() const {
    QStringList titles;
    for (const FakeDialogs::Alert& alert : dialogs.alerts)
      titles << alert.title;
    return titles;
  }

  QStringList log;
  Runner runner;
  FakeDialogs dialogs;
  SequenceDesktop desktop{log};
  RecordingUi ui{log};
  OneShotExtraction extraction;
};

QStringList extractionArguments(const FakeToolRunner& runner) {
  for (auto run = runner.runs.crbegin(); run != runner.runs.crend(); ++run) {
    if (run->arguments.value(0) == u"x" || run->arguments.value(0) == u"xvfj")
      return run->arguments;
  }
  return {};
}

const QString kFolder = QStringLiteral("/srv/in box");

QStringList expanded(QStringList arguments, const QString& archive) {
  return arguments.replaceInStrings("%P", archive)
      .replaceInStrings("%N", PathText::lastPathComponent(archive));
}

// 7-Zip picks the format by the archive's extension.
QString makeArchive(const QString& source, const QString& archive, const QStringList& files,
                    const QStringList& switches = {}) {
  runIn(source, "7z", QStringList{"a", "-bd"} + switches + QStringList{archive} + files);
  return archive;
}

}  // namespace

class OneShotExtractionTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    setPreferences({});
    FreeSpace::setSource({});
  }

  // Every row of both tables, with the folder each tool runs in.
  void extractionVectors_data() {
    QTest::addColumn<Route>("route");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<bool>("overwrite");
    QTest::addColumn<bool>("surroundingFolder");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("directory");
    const QString around = kFolder + "/photos";
    const auto row = [](const char* name, Route route, const QString& extension, bool overwrite,
                        bool surrounding, const QString& tool, const QStringList& arguments,
                        const QString& directory) {
      QTest::newRow(name) << route << extension << overwrite << surrounding << tool << arguments
                          << directory;
    };
    const Route outside = Route::FromOutside;
    const Route panel = Route::QuickPanel;
    const QStringList sevenByPath = {"x", "%P", "-ssc", "-aos", "-y"};
    const QStringList sevenByName = {"x", "%N", "-ssc", "-aos", "-y"};
    row("outside zip", outside, "zip", false, false, "7za", sevenByPath, kFolder);
    row("outside 7z overwriting", outside, "7z", true, false, "7za",
        {"x", "%P", "-ssc", "-aoa", "-y"}, kFolder);
    row("outside 001", outside, "001", false, false, "7za", sevenByPath, kFolder);
    row("outside rar", outside, "rar", false, false, "unrar", {"x", "-o-", "-y", "%P"}, kFolder);
    row("outside rar overwriting", outside, "rar", true, false, "unrar", {"x", "-o+", "-y", "%P"},
        kFolder);
    row("outside arj", outside, "arj", false, false, "arj", {"x", "-y", "%P"}, kFolder);
    row("outside lha", outside, "lha", false, false, "lha", {"x", "-f", "%P"}, kFolder);
    row("outside tbz2", outside, "tbz2", false, false, "/usr/bin/tar", {"xvfj", "%P"}, kFolder);
    row("outside bz2", outside, "bz2", true, false, "/usr/bin/tar", {"xvfj", "%P"}, kFolder);
    row("outside tgz", outside, "tgz", false, false, "7za", sevenByName, kFolder);
    row("outside gz overwriting", outside, "gz", true, false, "7za",
        {"x", "%N", "-ssc", "-aoa", "-y"}, kFolder);
    row("outside tar", outside, "tar", false, false, "7za", sevenByName, kFolder);
    row("outside txt after an archive", outside, "txt", false, false, "7za", sevenByName, kFolder);
    row("outside zip, surrounding folder", outside, "zip", false, true, "7za", sevenByPath, around);
    row("outside tgz, surrounding folder", outside, "tgz", false, true, "7za", sevenByName, around);
    row("outside lha, surrounding folder", outside, "lha", false, true, "lha", {"x", "-f", "%P"},
        around);
    row("panel zip", panel, "zip", false, false, "7za", sevenByName, kFolder);
    row("panel 7z overwriting", panel, "7z", true, false, "7za", {"x", "%N", "-ssc", "-aoa", "-y"},
        kFolder);
    row("panel 001", panel, "001", false, false, "7za", sevenByName, kFolder);
    row("panel rar", panel, "rar", false, false, "unrar", {"x", "-o-", "-y", "%N"}, kFolder);
    row("panel rar overwriting", panel, "rar", true, false, "unrar", {"x", "-o+", "-y", "%N"},
        kFolder);
    row("panel arj", panel, "arj", false, false, "arj", {"x", "-y", "%N"}, kFolder);
    row("panel lha", panel, "lha", false, false, "lha", {"x", "-f", "%P"}, kFolder);
    row("panel tgz", panel, "tgz", false, false, "7za", sevenByName, kFolder);
    row("panel gz", panel, "gz", false, false, "7za", sevenByName, kFolder);
    row("panel bz2", panel, "bz2", false, false, "7za", sevenByName, kFolder);
    row("panel tar overwriting", panel, "tar", true, false, "7za",
        {"x", "%N", "-ssc", "-aoa", "-y"}, kFolder);
    row("panel zip ignores the surrounding folder", panel, "zip", false, true, "7za", sevenByName,
        kFolder);
  }
  void extractionVectors() {
    QFETCH(Route, route);
    QFETCH(QString, extension);
    QFETCH(bool, overwrite);
    QFETCH(bool, surroundingFolder);
    QFETCH(QString, tool);
    QFETCH(QStringList, arguments);
    QFETCH(QString, directory);
    const QString archive = kFolder + "/photos." + extension;
    const ToolRun run =
        OneShotExtraction::extraction(route, archive, preferences(overwrite, surroundingFolder));
    QCOMPARE(tool.startsWith(u'/') ? run.program : PathText::lastPathComponent(run.program), tool);
    QCOMPARE(run.arguments, expanded(arguments, archive));
    QCOMPARE(run.directory, directory);
  }

  // Names that a tool would take for a switch still reach it as names.
  void aNameLikeASwitchStaysAName() {
    const QString archive = kFolder + "/-rf.arj";
    QCOMPARE(
        OneShotExtraction::extraction(Route::QuickPanel, archive, preferences(false)).arguments,
        (QStringList{"x", "-y", "./-rf.arj"}));
    QCOMPARE(
        OneShotExtraction::extraction(Route::QuickPanel, kFolder + "/-rf.zip", preferences(false))
            .arguments,
        (QStringList{"x", "-ssc", "-aos", "-y", "--", "-rf.zip"}));
  }

  // The same on both routes: in the archive's own folder, the archive by
  // full path for 7-Zip and by name for unrar.
  void passwordVectors_data() {
    QTest::addColumn<Route>("route");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("overwrite");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("arguments");
    for (const Route route : {Route::FromOutside, Route::QuickPanel}) {
      const QByteArray on = route == Route::FromOutside ? "outside " : "panel ";
      QTest::newRow(on + "rar") << route << "rar"
                                << "s3cret" << false << "unrar"
                                << QStringList{"x", "-o-", "-y", "-ps3cret", "%N"};
      QTest::newRow(on + "rar overwriting")
          << route << "rar"
          << "s3cret" << true << "unrar" << QStringList{"x", "-o+", "-y", "-ps3cret", "%N"};
      QTest::newRow(on + "zip") << route << "zip"
                                << "s3cret" << false << "7za"
                                << QStringList{"x", "-ps3cret", "%P", "-ssc", "-aos", "-y"};
      QTest::newRow(on + "7z overwriting")
          << route << "7z"
          << "s3cret" << true << "7za" << QStringList{"x", "-ps3cret", "%P", "-ssc", "-aoa", "-y"};
      QTest::newRow(on + "001, empty field")
          << route << "001"
          << "" << false << "7za" << QStringList{"x", "-p", "%P", "-ssc", "-aos", "-y"};
    }
  }
  void passwordVectors() {
    QFETCH(Route, route);
    QFETCH(QString, extension);
    QFETCH(QString, password);
    QFETCH(bool, overwrite);
    QFETCH(QString, tool);
    QFETCH(QStringList, arguments);
    QTemporaryDir folder;
    const QString archive = folder.path() + "/photos." + extension;
    const ToolRun run = OneShotExtraction::extractionWithPassword(archive, password, overwrite);
    QCOMPARE(run.directory, folder.path());
    QCOMPARE(PathText::lastPathComponent(run.program), tool);
    QCOMPARE(run.arguments, expanded(arguments, archive));

    if (overwrite)
      setPreferences({"overwriteOnExtraction"});
    Flow<FakeToolRunner> flow(route);
    QCOMPARE(flow.extraction.extractWithPassword(archive, password), Outcome::Done);
    QCOMPARE(extractionArguments(flow.runner), run.arguments);
    QCOMPARE(flow.runner.runs.last().directoryAtLaunch, folder.path());
  }

  void probeVerdicts_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("output");
    QTest::addColumn<bool>("encrypted");
    QTest::newRow("zip marked") << "zip"
                                << "Path = a.txt\nEncrypted = +\nMethod = AES-256\n"
                                << true;
    QTest::newRow("zip in other case") << "zip"
                                       << "Path = a.txt\nENCRYPTED = +\n"
                                       << true;
    QTest::newRow("zip clear") << "zip"
                               << "Path = a.txt\nEncrypted = -\n"
                               << false;
    QTest::newRow("7z with encrypted headers")
        << "7z"
        << "Listing archive: x.7z\n\nEnter password (will not be echoed):" << true;
    QTest::newRow("rar marked") << "rar"
                                << " Name\n*secret.txt  12  12\n"
                                << true;
    QTest::newRow("rar with a star in a name") << "rar"
                                               << " Name\n photo*1.jpg  12  12\n"
                                               << true;
    QTest::newRow("rar clear") << "rar"
                               << " Name\n notes.txt  12  12\n"
                               << false;
    QTest::newRow("rar listing ignores 7-Zip's marker") << "rar"
                                                        << "Encrypted = +\n"
                                                        << false;
  }
  void probeVerdicts() {
    QFETCH(QString, type);
    QFETCH(QString, output);
    QFETCH(bool, encrypted);
    QCOMPARE(OneShotExtraction::probeFindsEncryption(type, output), encrypted);
  }

  // The probe runs first, in the folder the tool will extract in; an
  // encrypted archive then waits for its password with nothing extracted.
  void theProbeDecides_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("listing");
    QTest::addColumn<QStringList>("probe");
    QTest::addColumn<Outcome>("outcome");
    const QStringList sevenZip = {"7za", "l", "-slt", "%P"};
    QTest::newRow("zip clear") << "a.zip" << QByteArray("Path = a.txt\nEncrypted = -\n") << sevenZip
                               << Outcome::Done;
    QTest::newRow("001 encrypted") << "a.7z.001" << QByteArray("Path = a.txt\nEncrypted = +\n")
                                   << sevenZip << Outcome::NeedsPassword;
    QTest::newRow("rar encrypted") << "a.rar" << QByteArray("*a.txt  5  5\n")
                                   << QStringList{"unrar", "l", "%P"} << Outcome::NeedsPassword;
    QTest::newRow("tgz, not probed") << "a.tgz" << QByteArray() << QStringList() << Outcome::Done;
  }
  void theProbeDecides() {
    QFETCH(QString, name);
    QFETCH(QByteArray, listing);
    QFETCH(QStringList, probe);
    QFETCH(Outcome, outcome);
    QTemporaryDir folder;
    const QString archive = folder.filePath(name);
    Flow<FakeToolRunner> flow(Route::QuickPanel);
    flow.runner.answer("7za", "l", listing);
    flow.runner.answer("unrar", "l", listing);
    QCOMPARE(flow.extraction.extract(archive), outcome);
    const FakeToolRunner::Recorded& first = flow.runner.runs.first();
    QCOMPARE(first.directoryAtLaunch, folder.path());
    if (!probe.isEmpty())
      QCOMPARE(QStringList{first.tool()} + first.arguments, expanded(probe, archive));
    else
      QCOMPARE(first.arguments.value(0), QString("x"));
    QCOMPARE(flow.runner.runs.size(), outcome == Outcome::Done ? 1 + !probe.isEmpty() : 1);
    QCOMPARE(flow.log.contains("DONE"), outcome == Outcome::Done);
  }

  // What the user sees and hears after the run, in order, with every
  // option on, on each route and pass: the archive's own folder is shown,
  // never the surrounding one.
  void afterStepsAreTaken_data() {
    QTest::addColumn<Route>("route");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("withPassword");
    QTest::addColumn<QStringList>("sequence");
    QTest::addColumn<bool>("macosxRemoved");
    QTest::newRow("outside zip") << Route::FromOutside << "a.zip" << false
                                 << QStringList{"DONE", "show %F", "beep", "wait 800",
                                                "trash %F/a.zip"}
                                 << true;
    QTest::newRow("outside arj") << Route::FromOutside << "a.arj" << false
                                 << QStringList{"DONE", "show %F", "trash %F/a.arj", "beep",
                                                "wait 800"}
                                 << false;
    QTest::newRow("outside password zip")
        << Route::FromOutside << "a.zip" << true << QStringList{"DONE", "show %F", "beep"} << true;
    QTest::newRow("panel zip") << Route::QuickPanel << "a.zip" << false
                               << QStringList{"DONE", "show %F", "beep", "wait 800"} << true;
    QTest::newRow("panel password zip")
        << Route::QuickPanel << "a.zip" << true << QStringList{"DONE", "beep", "wait 800"} << true;
    QTest::newRow("panel rar") << Route::QuickPanel << "a.rar" << false
                               << QStringList{"DONE", "show %F", "beep", "wait 800"} << false;
    QTest::newRow("outside password rar")
        << Route::FromOutside << "a.rar" << true
        << QStringList{"DONE", "show %F", "beep", "wait 800"} << false;
    QTest::newRow("panel password rar")
        << Route::QuickPanel << "a.rar" << true << QStringList{"DONE", "beep", "wait 800"} << false;
  }
  void afterStepsAreTaken() {
    QFETCH(Route, route);
    QFETCH(QString, name);
    QFETCH(bool, withPassword);
    QFETCH(QStringList, sequence);
    QFETCH(bool, macosxRemoved);
    QTemporaryDir folder;
    writeFile(folder.filePath("__MACOSX/._a.txt"), "fork");
    setPreferences({"openDestinationAfterExtraction", "playSoundWhenDone", "trashAfterExtracting",
                    "autoremoveMACOSXfolder", "CreateSurroundingFolderBeforeExtraction"});
    Flow<FakeToolRunner> flow(route);
    const QString archive = folder.filePath(name);
    const Outcome outcome = withPassword ? flow.extraction.extractWithPassword(archive, "pw")
                                         : flow.extraction.extract(archive);
    QCOMPARE(outcome, Outcome::Done);
    QCOMPARE(flow.log, sequence.replaceInStrings("%F", folder.path()));
    QCOMPARE(QFile::exists(folder.filePath("__MACOSX")), !macosxRemoved);
  }

  // A run that failed says so in one line, and its archive stays out of
  // the Trash; a program that cannot start gets an alert.
  void aFailedRunIsReported_data() {
    QTest::addColumn<bool>("started");
    QTest::addColumn<QStringList>("alerts");
    QTest::addColumn<int>("lines");
    QTest::newRow("failed") << true << QStringList() << 1;
    QTest::newRow("cannot start") << false << QStringList{"Missing program"} << 0;
  }
  void aFailedRunIsReported() {
    QFETCH(bool, started);
    QFETCH(QStringList, alerts);
    QFETCH(int, lines);
    QTemporaryDir folder;
    setPreferences({"trashAfterExtracting"});
    Flow<FakeToolRunner> flow(Route::FromOutside);
    ToolResult failed;
    failed.started = started;
    failed.exitCode = 2;
    failed.errors = "ERROR: Unexpected end of archive\n";
    flow.runner.answer(
        "7za", [](const QStringList& arguments) { return arguments.value(0) == u"x"; }, failed);
    QCOMPARE(flow.extraction.extract(folder.filePath("broken.tgz")), Outcome::Done);
    QCOMPARE(flow.alertTitles(), alerts);
    QCOMPARE(flow.ui.failures.size(), lines);
    QVERIFY(flow.desktop.trashed.isEmpty());
    QVERIFY(flow.log.contains("DONE"));
  }

  // rar and arj would read these names as patterns or lists of names.
  void unsafeNamesRunNothing_data() {
    QTest::addColumn<Route>("route");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("withPassword");
    QTest::newRow("outside rar wildcard") << Route::FromOutside << "part?.rar" << false;
    QTest::newRow("panel rar list file") << Route::QuickPanel << "@names.rar" << false;
    QTest::newRow("panel arj list file") << Route::QuickPanel << "!names.arj" << false;
    QTest::newRow("password rar wildcard") << Route::QuickPanel << "a*.rar" << true;
  }
  void unsafeNamesRunNothing() {
    QFETCH(Route, route);
    QFETCH(QString, name);
    QFETCH(bool, withPassword);
    QTemporaryDir folder;
    Flow<FakeToolRunner> flow(route);
    const QString archive = folder.filePath(name);
    const Outcome outcome = withPassword ? flow.extraction.extractWithPassword(archive, "pw")
                                         : flow.extraction.extract(archive);
    QCOMPARE(outcome, Outcome::Refused);
    QVERIFY(flow.runner.runs.isEmpty());
    QCOMPARE(flow.alertTitles(), QStringList{"Name not supported"});
    QVERIFY(flow.log.isEmpty());
  }

  void aZipIsExtractedBesideItself_data() {
    QTest::addColumn<Route>("route");
    QTest::newRow("outside") << Route::FromOutside;
    QTest::newRow("panel") << Route::QuickPanel;
  }
  void aZipIsExtractedBesideItself() {
    QFETCH(Route, route);
    QTemporaryDir top;
    const QString source = top.filePath("source");
    writeFile(source + "/a.txt", "alpha\n");
    writeFile(source + "/dir one/b.txt", "bravo\n");
    const QString folder = top.filePath("in box");
    QDir().mkpath(folder);
    const QString zip = makeArchive(source, folder + "/photos.zip", {"a.txt", "dir one"});
    Flow<RecordingRunner> flow(route);
    QCOMPARE(flow.extraction.extract(zip), Outcome::Done);
    QCOMPARE(
        treeUnder(folder),
        (Tree{{"a.txt", "alpha\n"}, {"dir one/b.txt", "bravo\n"}, {"photos.zip", contentOf(zip)}}));
    QCOMPARE(flow.log, QStringList{"DONE"});
    QVERIFY(flow.ui.failures.isEmpty());
  }

  // A multi-volume arj was cut at the end of its first volume.
  void arjVolumesAreExtractedWhole_data() {
    QTest::addColumn<Route>("route");
    QTest::newRow("outside") << Route::FromOutside;
    QTest::newRow("panel") << Route::QuickPanel;
  }
  void arjVolumesAreExtractedWhole() {
    QFETCH(Route, route);
    QTemporaryDir top;
    QByteArray big;
    for (int i = 0; i < 40000; ++i)
      big += QByteArray::number(i * 2654435761u, 36);
    writeFile(top.filePath("source/big.bin"), big);
    const QString folder = top.filePath("in box");
    QDir().mkpath(folder);
    TestArchives::runIn(top.filePath("source"), "arj",
                        {"a", "-y", "-m0", "-v100k", folder + "/mv.arj", "big.bin"});
    QVERIFY(QFile::exists(folder + "/mv.a01"));
    Flow<RecordingRunner> flow(route);
    QCOMPARE(flow.extraction.extract(folder + "/mv.arj"), Outcome::Done);
    QCOMPARE(contentOf(folder + "/big.bin"), big);
  }

  // With overwriting on, 7-Zip empties a file it would replace before it
  // finds the password wrong.
  void aWrongPasswordLosesNoFile_data() {
    QTest::addColumn<Route>("route");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("switches");
    QTest::newRow("outside zip") << Route::FromOutside << "locked.zip" << QStringList{"-psecret"};
    QTest::newRow("panel zip") << Route::QuickPanel << "locked.zip" << QStringList{"-psecret"};
    QTest::newRow("panel 7z, headers encrypted")
        << Route::QuickPanel << "locked.7z" << QStringList{"-psecret", "-mhe=on"};
  }
  void aWrongPasswordLosesNoFile() {
    QFETCH(Route, route);
    QFETCH(QString, name);
    QFETCH(QStringList, switches);
    QTemporaryDir folder;
    writeFile(folder.filePath("a.txt"), "archived\n");
    const QString archive = makeArchive(folder.path(), folder.filePath(name), {"a.txt"}, switches);
    writeFile(folder.filePath("a.txt"), "mine\n");
    setPreferences({"overwriteOnExtraction"});
    Flow<RecordingRunner> flow(route);
    QCOMPARE(flow.extraction.extract(archive), Outcome::NeedsPassword);
    QCOMPARE(flow.extraction.extractWithPassword(archive, "wrong"), Outcome::Refused);
    QCOMPARE(flow.alertTitles(), QStringList{"Wrong password"});
    QCOMPARE(contentOf(folder.filePath("a.txt")), QByteArray("mine\n"));
    QVERIFY(!flow.log.contains("DONE"));

    QCOMPARE(flow.extraction.extractWithPassword(archive, "secret"), Outcome::Done);
    QCOMPARE(contentOf(folder.filePath("a.txt")), QByteArray("archived\n"));
  }

  void aFullDestinationIsRefused() {
    QTemporaryDir folder;
    writeFile(folder.filePath("big.bin"), QByteArray(300 * 1024, 'a'));
    const QString zip = makeArchive(folder.path(), folder.filePath("big.zip"), {"big.bin"});
    const QByteArray mine(100, 'm');
    writeFile(folder.filePath("big.bin"), mine);
    FreeSpace::setSource([](const QString&) { return 1024; });
    setPreferences({"overwriteOnExtraction", "trashAfterExtracting"});
    Flow<RecordingRunner> flow(Route::FromOutside);
    QCOMPARE(flow.extraction.extract(zip), Outcome::Refused);
    QCOMPARE(flow.alertTitles(), QStringList{"Not enough space"});
    QCOMPARE(contentOf(folder.filePath("big.bin")), mine);
    QVERIFY(flow.desktop.trashed.isEmpty());
  }

  // 7-Zip unpacks one layer: the tgz gives its tar.
  void aTgzGivesItsInnerTar() {
    QTemporaryDir folder;
    writeFile(folder.filePath("src/a.txt"), "alpha\n");
    runIn(folder.filePath("src"), "tar", {"czf", "../notes.tgz", "a.txt"});
    Flow<RecordingRunner> flow(Route::QuickPanel);
    QCOMPARE(flow.extraction.extract(folder.filePath("notes.tgz")), Outcome::Done);
    QVERIFY(QFileInfo(folder.filePath("notes.tar")).isFile());
    QVERIFY(!QFile::exists(folder.filePath("a.txt")));
  }

  // A "__MACOSX" lying beside the archive goes after a zip, even when it
  // was there before; beside a rar it stays.
  void macosxFolderRules_data() {
    QTest::addColumn<Route>("route");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("removed");
    QTest::newRow("panel zip") << Route::QuickPanel << "zip" << true;
    QTest::newRow("panel rar") << Route::QuickPanel << "rar" << false;
    QTest::newRow("outside zip") << Route::FromOutside << "zip" << true;
    QTest::newRow("outside rar") << Route::FromOutside << "rar" << false;
  }
  void macosxFolderRules() {
    QFETCH(Route, route);
    QFETCH(QString, type);
    QFETCH(bool, removed);
    QTemporaryDir folder;
    writeFile(folder.filePath("__MACOSX/._old"), "fork");
    QString archive;
    if (type == u"zip") {
      writeFile(folder.filePath("src/test1.bin"), "one\n");
      archive = makeArchive(folder.filePath("src"), folder.filePath("plain.zip"), {"test1.bin"});
      QDir(folder.filePath("src")).removeRecursively();
    } else {
      archive = folder.filePath("plain.rar");
      QFile::copy(TestArchives::fixturePath("rar/rar5/plain.rar"), archive);
    }
    setPreferences({"autoremoveMACOSXfolder"});
    Flow<RecordingRunner> flow(route);
    QCOMPARE(flow.extraction.extract(archive), Outcome::Done);
    QVERIFY(QFileInfo(folder.filePath("test1.bin")).isFile());
    QCOMPARE(QFile::exists(folder.filePath("__MACOSX")), !removed);
  }

  // A link named "__MACOSX" goes, but not what it leads to.
  void aMacosxLinkGoesAlone() {
    QTemporaryDir folder;
    writeFile(folder.filePath("elsewhere/keep.txt"), "keep\n");
    QDir().mkpath(folder.filePath("in"));
    QFile::link(folder.filePath("elsewhere"), folder.filePath("in/__MACOSX"));
    setPreferences({"autoremoveMACOSXfolder"});
    Flow<FakeToolRunner> flow(Route::QuickPanel);
    QCOMPARE(flow.extraction.extract(folder.filePath("in/a.zip")), Outcome::Done);
    QVERIFY(!QFileInfo(folder.filePath("in/__MACOSX")).isSymLink());
    QCOMPARE(contentOf(folder.filePath("elsewhere/keep.txt")), QByteArray("keep\n"));
  }

  void anLhaGoesByFullPath() {
    QTemporaryDir folder;
    writeFile(folder.filePath("src/a.txt"), "alpha\n");
    const QString archive = folder.filePath("notes.lha");
    runIn(folder.filePath("src"), "jlha", {"a", archive, "a.txt"});
    Flow<RecordingRunner> flow(Route::QuickPanel);
    QCOMPARE(flow.extraction.extract(archive), Outcome::Done);
    QCOMPARE(flow.runner.runs.last().arguments, (QStringList{"x", "-f", archive}));
    QCOMPARE(contentOf(folder.filePath("a.txt")), QByteArray("alpha\n"));
  }

  // A tbz2 left a link to a folder outside, which a later extraction
  // would write through.
  void aLinkLeadingOutsideIsRemoved() {
    QTemporaryDir top;
    QDir().mkpath(top.filePath("src"));
    QDir().mkpath(top.filePath("in"));
    QFile::link("../outside", top.filePath("src/evil"));
    writeFile(top.filePath("src/fine.txt"), "fine\n");
    const QString archive = top.filePath("in/first.tbz2");
    runIn(top.filePath("src"), "tar", {"cjf", archive, "evil", "fine.txt"});
    Flow<RecordingRunner> flow(Route::FromOutside);
    QCOMPARE(flow.extraction.extract(archive), Outcome::Done);
    QVERIFY(!QFileInfo(top.filePath("in/evil")).isSymLink());
    QCOMPARE(contentOf(top.filePath("in/fine.txt")), QByteArray("fine\n"));
    QCOMPARE(flow.ui.failures.size(), 1);
    QVERIFY(flow.ui.failures.first().contains("evil"));
  }

  // The surrounding folder is made first; a zip goes in by full path, a tgz
  // by a name that is not in that folder, so nothing is extracted and the
  // user is told.
  void theSurroundingFolder_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("extracted");
    QTest::newRow("zip") << "x.zip" << true;
    QTest::newRow("tgz") << "x.tgz" << false;
  }
  void theSurroundingFolder() {
    QFETCH(QString, name);
    QFETCH(bool, extracted);
    QTemporaryDir folder;
    writeFile(folder.filePath("src/a.txt"), "alpha\n");
    const QString archive = folder.filePath(name);
    if (name.endsWith(u".zip"))
      makeArchive(folder.filePath("src"), archive, {"a.txt"});
    else
      runIn(folder.filePath("src"), "tar", {"czf", archive, "a.txt"});
    setPreferences({"CreateSurroundingFolderBeforeExtraction"});
    Flow<RecordingRunner> flow(Route::FromOutside);
    QCOMPARE(flow.extraction.extract(archive), Outcome::Done);
    QVERIFY(QFileInfo(folder.filePath("x")).isDir());
    QCOMPARE(QDir::currentPath(), folder.filePath("x"));
    QCOMPARE(QFile::exists(folder.filePath("x/a.txt")), extracted);
    QCOMPARE(flow.ui.failures.size(), extracted ? 0 : 1);
    QVERIFY(flow.log.contains("DONE"));
  }

  // With overwriting off, tar, arj and lha keep a file the user changed.
  void overwritingOffKeepsFiles_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("tbz2") << "keep.tbz2"
                          << "tar" << QStringList{"cjf", "%A", "a.txt", "b.txt"};
    QTest::newRow("arj") << "keep.arj"
                         << "arj" << QStringList{"a", "%A", "a.txt", "b.txt"};
    QTest::newRow("lha") << "keep.lha"
                         << "jlha" << QStringList{"a", "%A", "a.txt", "b.txt"};
  }
  void overwritingOffKeepsFiles() {
    QFETCH(QString, name);
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QTemporaryDir folder;
    writeFile(folder.filePath("src/a.txt"), "alpha\n");
    writeFile(folder.filePath("src/b.txt"), "bravo\n");
    const QString archive = folder.filePath(name);
    runIn(folder.filePath("src"), program, arguments.replaceInStrings("%A", archive));
    QDir(folder.filePath("src")).removeRecursively();
    writeFile(folder.filePath("a.txt"), "edited\n");
    Flow<RecordingRunner> flow(Route::FromOutside);
    QCOMPARE(flow.extraction.extract(archive), Outcome::Done);
    QCOMPARE(contentOf(folder.filePath("a.txt")), QByteArray("edited\n"));
    QCOMPARE(contentOf(folder.filePath("b.txt")), QByteArray("bravo\n"));
    QVERIFY(flow.dialogs.alerts.isEmpty());
  }
};

QTEST_MAIN(OneShotExtractionTest)
#include "tst_one_shot_extraction.moc"
