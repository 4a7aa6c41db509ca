#include "FakeToolRunner.h"
#include "engine/ArchiveOpener.h"
#include "engine/OpeningWindow.h"
#include "platform/PreferencesStore.h"
#include "support/TestArchives.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Records what opening shows; the password panel is a flag.
class RecordingWindow : public OpeningWindow {
 public:
  bool passwordPanelVisible() const override { return panelVisible; }
  void showPasswordPanel() override {
    panelVisible = true;
    ++panelsShown;
  }
  void hidePasswordPanel() override { panelVisible = false; }
  void showRows(const ArchiveEntries& rows) override {
    shownRows = rows;
    ++listings;
  }
  void reportProblem(const ToolProblem& problem) override { problems << problem; }
  void startSpinner() override { spinning = true; }
  void stopSpinner() override { spinning = false; }

  bool panelVisible = false;
  int panelsShown = 0;
  int listings = 0;
  bool spinning = false;
  ArchiveEntries shownRows;
  QList<ToolProblem> problems;
};

// An opener on a fake runner, showing into a recording window.
struct OpenerFixture {
  FakeToolRunner runner;
  RecordingWindow window;
  NoEntryIcons icons;
  ArchiveOpener opener{runner, icons, window};

  std::tuple<FakeToolRunner&, RecordingWindow&, ArchiveOpener&> parts() {
    return {runner, window, opener};
  }
};

const QByteArray kEncrypted7zProbe = "----------\nPath = a\nEncrypted = +\n";
const QByteArray kHeaderEncryptedProbe =
    "\n7-Zip [64] 26.02 : x\n\nListing archive: he.7z\n\n\nEnter password (will not be echoed):\n";

}  // namespace

class ArchiveOpenerTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir folder_;

  QString archiveNamed(const QString& name) {
    const QString path = folder_.filePath(name);
    QFile file(path);
    file.open(QIODevice::WriteOnly);
    file.write("123456789");
    return path;
  }

 private slots:
  void init() { PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO"); }

  void recordsTheArchiveAndMovesIntoItsFolder() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    const QString path = archiveNamed("pack.tar");
    opener.open(path);
    QCOMPARE(opener.archive().filename, QString("pack.tar"));
    QCOMPARE(opener.archive().archivetype, QString("tar"));
    QCOMPARE(opener.archive().filesize, QString("0 KB"));
    QCOMPARE(opener.archive().crc32, QString("CBF43926"));
    QCOMPARE(opener.archive().archivePass, QString("-p{}"));
    QCOMPARE(QDir::currentPath(), QDir(folder_.path()).canonicalPath());
    QCOMPARE(runner.runs.size(), 1);
    QCOMPARE(runner.runs[0].tool(), QString("7za"));
    QCOMPARE(runner.runs[0].arguments, (QStringList{"l", "-p{}", path, "-slt"}));
    QVERIFY(!window.spinning);
  }

  void probesAndListsPerType_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("tools");
    QTest::addColumn<QList<QStringList>>("arguments");
    const QString p = "%P";
    QTest::newRow("zip") << "a.zip" << QStringList{"7za", "7za"}
                         << QList<QStringList>{{"l", "-slt", p}, {"l", "-p{}", p, "-slt"}};
    QTest::newRow("7z") << "a.7z" << QStringList{"7za", "7za"}
                        << QList<QStringList>{{"l", "-slt", p}, {"l", "-p{}", p, "-slt"}};
    QTest::newRow("rar") << "a.rar" << QStringList{"unrar", "r"}
                         << QList<QStringList>{{"l", p}, {"l", "-p{}", p}};
    QTest::newRow("arj") << "a.arj" << QStringList{"arj"} << QList<QStringList>{{"l", p}};
    QTest::newRow("lha") << "a.lha" << QStringList{"lha", "lha"}
                         << QList<QStringList>{{"v", p}, {}};
    QTest::newRow("tar.gz lists nothing") << "a.tar.gz" << QStringList{} << QList<QStringList>{};
    QTest::newRow("upper-case ZIP lists nothing")
        << "x.ZIP" << QStringList{} << QList<QStringList>{};
    QTest::newRow("first volume lists nothing")
        << "a.7z.001" << QStringList{} << QList<QStringList>{};
  }
  void probesAndListsPerType() {
    QFETCH(QString, name);
    QFETCH(QStringList, tools);
    QFETCH(QList<QStringList>, arguments);
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    window.shownRows = {ArchiveEntry{"old row"}};
    const QString path = archiveNamed(name);
    opener.open(path);
    QCOMPARE(runner.runs.size(), tools.size());
    for (qsizetype i = 0; i < tools.size(); ++i) {
      QCOMPARE(runner.runs[i].tool(), tools[i]);
      QStringList expected = arguments[i];
      expected.replaceInStrings("%P", path);
      QCOMPARE(runner.runs[i].arguments, expected);
    }
    // Types that list nothing leave the rows of the archive before.
    QCOMPARE(window.listings, tools.isEmpty() ? 0 : 1);
    QCOMPARE(window.shownRows.isEmpty(), !tools.isEmpty());
  }

  void protectedArchivesAskForThePassword_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("probeTool");
    QTest::addColumn<QByteArray>("probeOutput");
    QTest::addColumn<QStringList>("listing");
    QTest::newRow("7z") << "s.7z"
                        << "7za" << kEncrypted7zProbe << QStringList{"l", "-pabc", "%P", "-slt"};
    QTest::newRow("zip, any case")
        << "s.zip"
        << "7za" << QByteArray("ENCRYPTED = +") << QStringList{"l", "-pabc", "%P", "-slt"};
    QTest::newRow("7z with encrypted headers")
        << "h.7z"
        << "7za" << kHeaderEncryptedProbe << QStringList{"l", "-pabc", "%P", "-slt"};
    QTest::newRow("rar marks with a star")
        << "s.rar"
        << "unrar" << QByteArray("*secret.txt  10  10") << QStringList{"l", "-pabc", "%P"};
  }
  void protectedArchivesAskForThePassword() {
    QFETCH(QString, name);
    QFETCH(QString, probeTool);
    QFETCH(QByteArray, probeOutput);
    QFETCH(QStringList, listing);
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    runner.answer(probeTool, "l", probeOutput);
    window.shownRows = {ArchiveEntry{"old row"}};
    const QString path = archiveNamed(name);
    opener.open(path);
    QCOMPARE(window.panelsShown, 1);
    QCOMPARE(runner.runs.size(), 1);
    QCOMPARE(window.listings, 0);
    QVERIFY(!window.spinning);

    opener.passwordEntered("abc");
    QVERIFY(!window.panelVisible);
    QCOMPARE(opener.archive().archivePass, QString("-pabc"));
    listing.replaceInStrings("%P", path);
    QCOMPARE(runner.runs.last().arguments, listing);
    QCOMPARE(window.listings, 1);
  }

  void closingThePanelKeepsTheOldRows() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    runner.answer("7za", "l", kEncrypted7zProbe);
    window.shownRows = {ArchiveEntry{"old row"}};
    opener.open(archiveNamed("s.7z"));
    opener.passwordPanelClosed();
    QVERIFY(!window.panelVisible);
    QCOMPARE(window.shownRows.size(), 1);
    QCOMPARE(runner.runs.size(), 1);
    QCOMPARE(opener.archive().filename, QString("s.7z"));
  }

  void anEmptyPasswordGivesABareSwitch() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    opener.open(archiveNamed("s.zip"));
    opener.passwordEntered("");
    QCOMPARE(runner.runs.last().arguments.value(1), QString("-p"));
  }

  void aVisiblePanelLetsTheOpeningGoOn() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    runner.answer("7za", "l", kEncrypted7zProbe);
    window.panelVisible = true;
    opener.open(archiveNamed("s.7z"));
    QCOMPARE(window.panelsShown, 0);
    QCOMPARE(window.listings, 1);
    QCOMPARE(runner.runs.last().arguments.value(1), QString("-p{}"));
  }

  void macosxFolderIsDeletedBeforeTheFirstListing_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("deletion");
    QTest::newRow("zip") << "m.zip"
                         << "7za" << QStringList{"d", "-p{}", "%P", "__MACOSX"};
    QTest::newRow("rar") << "m.rar"
                         << "r" << QStringList{"d", "-p{}", "%P", "__MACOSX"};
    QTest::newRow("arj") << "m.arj"
                         << "arj" << QStringList{"d", "%P", "__MACOSX"};
    QTest::newRow("gz goes to 7za") << "m.gz"
                                    << "7za" << QStringList{"d", "-p{}", "%P", "__MACOSX"};
  }
  void macosxFolderIsDeletedBeforeTheFirstListing() {
    QFETCH(QString, name);
    QFETCH(QString, tool);
    QFETCH(QStringList, deletion);
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "YES");
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    const QString path = archiveNamed(name);
    opener.open(path);
    deletion.replaceInStrings("%P", path);
    const auto found = std::find_if(runner.runs.cbegin(), runner.runs.cend(),
                                    [](const auto& run) { return run.arguments.value(0) == "d"; });
    QVERIFY(found != runner.runs.cend());
    QCOMPARE(found->tool(), tool);
    QCOMPARE(found->arguments, deletion);
    QVERIFY(std::none_of(runner.runs.cbegin(), found, [](const auto& run) {
      return run.arguments.value(0) != "l" || run.tool() == "r";
    }));
  }

  void aMissingProgramForTheCleanUpIsOnlyAStatusLine() {
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "YES");
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    ToolResult missing;
    missing.exitCode = 127;
    missing.errors = "r: RARLAB's rar is not installed\n";
    runner.answer(
        "r", [](const QStringList& arguments) { return arguments.value(0) == "d"; }, missing);
    opener.open(archiveNamed("m.rar"));
    QCOMPARE(window.problems.size(), 1);
    QCOMPARE(window.problems[0].kind, ToolProblem::Kind::Failed);
    QCOMPARE(window.listings, 1);
  }

  void aMissingProgramIsNamedOnceAndStopsTheOpening() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    ToolResult missing;
    missing.exitCode = 127;
    missing.errors = "7za: the program 7z is missing; install the Debian package p7zip-full.\n";
    runner.answer(
        "7za", [](const QStringList&) { return true; }, missing);
    opener.open(archiveNamed("a.zip"));
    QCOMPARE(runner.runs.size(), 1);
    QCOMPARE(window.problems.size(), 1);
    QCOMPARE(window.problems[0].kind, ToolProblem::Kind::MissingProgram);
    QVERIFY(window.problems[0].message.contains("p7zip-full"));
    QVERIFY(!window.spinning);
  }

  void aProgramThatCannotStartIsMissingToo() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    ToolResult unstarted;
    unstarted.started = false;
    runner.answer(
        "arj", [](const QStringList&) { return true; }, unstarted);
    opener.open(archiveNamed("a.arj"));
    QCOMPARE(window.problems.size(), 1);
    QCOMPARE(window.problems[0].kind, ToolProblem::Kind::MissingProgram);
    QVERIFY(window.problems[0].message.contains("arj"));
    QCOMPARE(window.listings, 1);
    QVERIFY(window.shownRows.isEmpty());
  }

  void namesThatAreNotUtf8ListNothingAndSaySo() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    runner.answer("arj", "l",
                  TestArchives::fixture("tool-output/unrar-3.90-l-plain.txt") + "\xff\xfe\n");
    opener.open(archiveNamed("a.arj"));
    QVERIFY(window.shownRows.isEmpty());
    QCOMPARE(window.problems.size(), 1);
    QCOMPARE(window.problems[0].kind, ToolProblem::Kind::NamesNotUtf8);
    QVERIFY(window.problems[0].message.contains("UTF-8"));
  }

  void aFailedListingSaysWhatFailed() {
    OpenerFixture fx;
    auto [runner, window, opener] = fx.parts();
    ToolResult failed;
    failed.exitCode = 2;
    failed.errors = "\nERROR: a.7z : Cannot open the file as archive\n\n";
    runner.answer(
        "7za", [](const QStringList& arguments) { return arguments.contains("-p{}"); }, failed);
    opener.open(archiveNamed("a.7z"));
    QCOMPARE(window.problems.size(), 1);
    QCOMPARE(window.problems[0].kind, ToolProblem::Kind::Failed);
    QCOMPARE(
        window.problems[0].message,
        QString("7za l failed with exit status 2: ERROR: a.7z : Cannot open the file as archive"));
  }
};

QTEST_GUILESS_MAIN(ArchiveOpenerTest)
#include "tst_archive_opener.moc"
