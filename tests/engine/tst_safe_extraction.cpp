#include "engine/ArchiveContents.h"
#include "engine/ArchiveEditing.h"
#include "engine/ArchiveTest.h"
#include "engine/EscapingLinks.h"
#include "engine/Extraction.h"
#include "engine/FreeSpace.h"
#include "engine/ToolLocations.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QFile>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProcess>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

using TestArchives::contentOf;
using TestArchives::Tree;
using TestArchives::treeUnder;
using TestArchives::writeFile;

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

struct Fixture : EngineFixture<RecordingRunner> {
  Extraction& extraction() { return *engine.extraction(); }
  QString status() const { return engine.ui().mainWindow->statusBar()->currentMessage(); }
  QString report() const { return engine.ui().fileContentView->toPlainText(); }
  QStringList alertTitles() const {
    QStringList titles;
    for (const FakeDialogs::Alert& alert : dialogs.alerts)
      titles << alert.title;
    return titles;
  }
  // The runs of one tool, by its file name.
  QList<ToolRun> runsOf(const QString& tool) const {
    QList<ToolRun> found;
    for (const ToolRun& run : runner.runs) {
      if (run.program.section(u'/', -1) == tool)
        found << run;
    }
    return found;
  }
};

// Lines of numbers: slow enough to compress that a tool can be stopped
// while it works.
void writeLongText(const QString& path, int lines) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  QByteArray chunk;
  for (int line = 0; line < lines; ++line) {
    chunk += "line " + QByteArray::number(line) + " of a long text\n";
    if (chunk.size() > (1 << 20)) {
      file.write(chunk);
      chunk.clear();
    }
  }
  file.write(chunk);
}

// A small file system of its own, when this machine lets a test mount one.
class SmallFileSystem {
 public:
  explicit SmallFileSystem(const QString& folder) : folder_(folder) {
    mounted_ = QProcess::execute("mount", {"-t", "tmpfs", "-o", "size=1m", "tmpfs", folder}) == 0;
  }
  ~SmallFileSystem() {
    if (mounted_)
      QProcess::execute("umount", {folder_});
  }
  bool mounted() const { return mounted_; }

 private:
  QString folder_;
  bool mounted_ = false;
};

}  // namespace

// Extractions and edits that must lose no user file and write nothing
// outside the chosen folder, with the real tools.
class SafeExtractionTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;

  QString make(const QString& archive, const QString& program, const QStringList& arguments,
               const QString& in = QString()) {
    return TestArchives::makeArchive(work_.path(), archive, program, arguments, in);
  }

 private slots:
  void initTestCase() {
    writeFile(work_.filePath("a.txt"), "alpha\n");
    writeFile(work_.filePath("b.txt"), "bravo\n");
    writeFile(work_.filePath("c.txt"), "charlie\n");
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO");
  }

  void init() {
    for (const char* key :
         {"overwriteOnExtraction", "openDestinationAfterExtraction", "playSoundWhenDone"})
      PreferencesStore::setText(key, "NO");
    FreeSpace::setSource({});
  }

  void tarListingReadsEscapedNamesAndLinks() {
    const QByteArray listing =
        "drwxr-xr-x 0/0               0 2026-11-23 14:18 dir/\n"
        "-rw-r--r-- 0/0            1234 2026-11-23 14:18 dir/two  spaces.txt\n"
        "-rw-r--r-- 0/0               5 2026-11-23 14:18 new\\nline\\\\back\n"
        "-rw-r--r-- 0/0               3 2026-11-23 14:18 caf\\303\\251\n"
        "lrwxrwxrwx 0/0               0 2026-11-23 14:18 evil -> ../outside\n"
        "hrw-r--r-- 0/0               0 2026-11-23 14:18 hard link to dir/x\n";
    const ArchiveContents contents = ArchiveContents::fromTarListing(listing);
    QVERIFY(contents.complete);
    QStringList paths;
    for (const ContentEntry& entry : contents.entries)
      paths << entry.path;
    QCOMPARE(paths, (QStringList{"dir", "dir/two  spaces.txt", "new\nline\\back", "café", "evil",
                                 "hard"}));
    QVERIFY(contents.entries[0].folder);
    QCOMPARE(contents.entries[1].size, 1234);
    QCOMPARE(contents.under({"dir"}).size(), 2);
    QVERIFY(!ArchiveContents::fromTarListing("caf\\377\n").complete);
  }

  void technicalListingMarksFoldersAndEncryption() {
    const QString listing =
        "Path = /x/t.zip\nType = zip\n\n----------\n"
        "Path = dir\nFolder = +\nSize = 0\n\n"
        "Path = dir/secret\nFolder = -\nSize = 42\nEncrypted = +\n\n"
        "Path = directory\nFolder = -\nSize = 7\nEncrypted = -\n";
    const ArchiveContents contents = ArchiveContents::fromTechnicalListing(listing);
    QCOMPARE(contents.entries.size(), 3);
    QVERIFY(contents.entries[0].folder);
    QVERIFY(contents.entries[1].encrypted);
    QCOMPARE(contents.entries[1].size, 42);
    // "dir" holds dir/secret, not its neighbour "directory".
    QCOMPARE(contents.under({"dir"}).size(), 2);
  }

  void linksLeadingOutsideAreFound_data() {
    QTest::addColumn<QString>("target");
    QTest::addColumn<bool>("outside");
    QTest::newRow("up and out") << "../outside" << true;
    QTest::newRow("absolute") << "/etc" << true;
    QTest::newRow("dangling, outside") << "../nowhere/file" << true;
    QTest::newRow("sibling") << "inner" << false;
    QTest::newRow("down and back") << "inner/../inner" << false;
    QTest::newRow("through a link that leaves") << "away/x" << true;
  }
  void linksLeadingOutsideAreFound() {
    QFETCH(QString, target);
    QFETCH(bool, outside);
    QTemporaryDir top;
    const QString root = top.filePath("root");
    QDir().mkpath(root + "/inner");
    QDir().mkpath(top.filePath("outside"));
    QFile::link("../outside", root + "/away");
    QVERIFY(QFile::link(target, root + "/link"));
    QCOMPARE(EscapingLinks::leadsOutside(root + "/link", root), outside);
  }

  // A zip whose entries have different passwords: testing one entry said
  // nothing about the others, and the user's b.txt was emptied.
  void mixedPasswordsLoseNoFile_data() {
    QTest::addColumn<bool>("selectedOnly");
    QTest::newRow("whole archive") << false;
    QTest::newRow("selected rows") << true;
  }
  void mixedPasswordsLoseNoFile() {
    QFETCH(bool, selectedOnly);
    const QString path = make("mixed.zip", "7z", {"a", "-bd", "-pone", "%A", "a.txt"});
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", "-ptwo", path, "b.txt"});
    QTemporaryDir destination;
    writeFile(destination.filePath("b.txt"), "precious\n");
    PreferencesStore::setYes("overwriteOnExtraction", true);
    Fixture fx;
    fx.open(path, "one");
    if (selectedOnly) {
      fx.selectRowsNamed({"a.txt", "b.txt"});
      fx.dialogs.openAnswers << QStringList{destination.path()};
      fx.extraction().btnExtractSelected();
    } else {
      fx.extraction().openDialogForExtraction({destination.path()}, 1);
    }
    QCOMPARE(fx.alertTitles(), QStringList{"Wrong password"});
    QCOMPARE(treeUnder(destination.path()), (Tree{{"b.txt", "precious\n"}}));

    // Where the password opens every entry that lands on a file, it goes on.
    QFile::remove(destination.filePath("b.txt"));
    writeFile(destination.filePath("a.txt"), "old\n");
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(contentOf(destination.filePath("a.txt")), QByteArray("alpha\n"));
  }

  // With overwriting off an edited file was replaced by tar, arj and lha.
  void overwritingOffKeepsEditedFiles_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("tbz2") << "keep.tbz2"
                          << "tar" << QStringList{"cjf", "%A", "a.txt", "b.txt"};
    QTest::newRow("bz2") << "keep.tar.bz2"
                         << "tar" << QStringList{"cjf", "%A", "a.txt", "b.txt"};
    QTest::newRow("arj") << "keep.arj"
                         << "arj" << QStringList{"a", "%A", "a.txt", "b.txt"};
    QTest::newRow("lha") << "keep.lha"
                         << "jlha" << QStringList{"a", "%A", "a.txt", "b.txt"};
  }
  void overwritingOffKeepsEditedFiles() {
    QFETCH(QString, archive);
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    const QString path = make(archive, program, arguments);
    QTemporaryDir destination;
    writeFile(destination.filePath("a.txt"), "edited\n");
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(treeUnder(destination.path()), (Tree{{"a.txt", "edited\n"}, {"b.txt", "bravo\n"}}));
    QVERIFY(fx.dialogs.alerts.isEmpty());
  }

  // Only a collision changes the vector; otherwise it is the plain one.
  void withoutCollisionTheVectorIsPlain_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("vector");
    QTest::newRow("tbz2") << "plain.tbz2"
                          << "tar" << QStringList{"cjf", "%A", "a.txt"} << "tar"
                          << QStringList{"xvfj", "%A"};
    QTest::newRow("arj") << "plain.arj"
                         << "arj" << QStringList{"a", "%A", "a.txt"} << "arj"
                         << QStringList{"x", "-y", "plain.arj", "%D"};
    QTest::newRow("lha") << "plain.lha"
                         << "jlha" << QStringList{"a", "%A", "a.txt"} << "lha"
                         << QStringList{"x", "-f", "%A"};
  }
  void withoutCollisionTheVectorIsPlain() {
    QFETCH(QString, archive);
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(QString, tool);
    QFETCH(QStringList, vector);
    const QString path = make(archive, program, arguments);
    QTemporaryDir destination;
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    vector.replaceInStrings("%A", path).replaceInStrings("%D", destination.path());
    QCOMPARE(fx.runsOf(tool).last().arguments, vector);
    QCOMPARE(contentOf(destination.filePath("a.txt")), QByteArray("alpha\n"));
  }

  // A tbz2 left a link to a folder outside; a zip extracted next into the
  // same folder wrote through it.
  void aLinkLeadingOutsideIsRemoved() {
    QTemporaryDir top;
    const QString source = top.filePath("source");
    QDir().mkpath(source + "/evil");
    QDir().mkpath(top.filePath("outside"));
    writeFile(source + "/evil/pwned.txt", "gotcha\n");
    const QString zip = top.filePath("second.zip");
    TestArchives::runIn(source, "7z", {"a", "-bd", zip, "evil"});
    QDir(source + "/evil").removeRecursively();
    QFile::link("../outside", source + "/evil");
    writeFile(source + "/fine.txt", "fine\n");
    const QString tbz2 = top.filePath("first.tbz2");
    TestArchives::runIn(source, "tar", {"cjf", tbz2, "evil", "fine.txt"});
    const QString destination = top.filePath("destination");
    QDir().mkpath(destination);
    QFile::link("../outside", destination + "/mine");

    Fixture fx;
    fx.open(tbz2);
    fx.extraction().openDialogForExtraction({destination}, 1);
    QVERIFY(!QFileInfo(destination + "/evil").isSymLink());
    QVERIFY(fx.status().contains("evil"));
    QVERIFY2(QFileInfo(destination + "/mine").isSymLink(), "the user's own link stays");
    fx.open(zip);
    fx.extraction().openDialogForExtraction({destination}, 1);
    QVERIFY(!QFile::exists(top.filePath("outside/pwned.txt")));
    QCOMPARE(contentOf(destination + "/fine.txt"), QByteArray("fine\n"));
  }

  // A full disk during an overwriting extraction left neither version.
  void aFullDestinationLosesNothing_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("realFileSystem");
    QTest::newRow("7z, small file system") << "full.7z"
                                           << "7z" << true;
    QTest::newRow("arj, small file system") << "full.arj"
                                            << "arj" << true;
    QTest::newRow("zip, little space reported") << "full.zip"
                                                << "7z" << false;
  }
  void aFullDestinationLosesNothing() {
    QFETCH(QString, archive);
    QFETCH(QString, program);
    QFETCH(bool, realFileSystem);
    QTemporaryDir top;
    const QByteArray incompressible = QByteArray::fromStdString([] {
      std::string bytes(1536 * 1024, '\0');
      quint32 state = 12345;
      for (char& byte : bytes)
        byte = static_cast<char>((state = state * 1103515245 + 12345) >> 24);
      return bytes;
    }());
    writeFile(top.filePath("big.bin"), incompressible);
    const QString path = top.filePath(archive);
    TestArchives::runIn(top.path(), program, {"a", path, "big.bin"});
    const QString destination = top.filePath("destination");
    QDir().mkpath(destination);
    SmallFileSystem small(destination);
    if (realFileSystem && !small.mounted())
      QSKIP("this machine does not let a test mount a file system");
    if (!realFileSystem)
      FreeSpace::setSource([](const QString&) { return 1024 * 1024; });
    const QByteArray mine(600 * 1024, 'm');
    writeFile(destination + "/big.bin", mine);
    PreferencesStore::setYes("overwriteOnExtraction", true);
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination}, 1);
    QCOMPARE(fx.alertTitles(), QStringList{"Not enough space"});
    QCOMPARE(contentOf(destination + "/big.bin"), mine);
  }

  // arj extracted the first volume only, a file cut to a third, and its
  // test passed.
  void arjVolumesAreExtractedAndTestedWhole() {
    QTemporaryDir top;
    QByteArray big;
    for (int i = 0; i < 40000; ++i)
      big += QByteArray::number(i * 2654435761u, 36);
    writeFile(top.filePath("big.bin"), big);
    writeFile(top.filePath("small.txt"), "small\n");
    const QString path = top.filePath("mv.arj");
    TestArchives::runIn(top.path(), "arj",
                        {"a", "-y", "-m0", "-v100k", path, "big.bin", "small.txt"});
    QVERIFY(QFile::exists(top.filePath("mv.a01")));
    const QString destination = top.filePath("out");
    QDir().mkpath(destination);
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination}, 1);
    QCOMPARE(treeUnder(destination), (Tree{{"big.bin", big}, {"small.txt", "small\n"}}));

    fx.engine.test()->btnTestAction();
    QCOMPARE(fx.dialogs.alerts.last().message, QString("No errors found."));
    const QByteArray second = contentOf(top.filePath("mv.a01"));
    writeFile(top.filePath("mv.a01"), second.left(second.size() / 2));
    fx.engine.test()->btnTestAction();
    QCOMPARE(fx.dialogs.alerts.last().message, QString("Archive is damaged."));
  }

  // After an lha extraction had moved Quillet's folder, Add made a new
  // archive in the destination and left the open one unchanged.
  void addAfterAnExtractionUpdatesTheOpenArchive() {
    QTemporaryDir top;
    writeFile(top.filePath("a.txt"), "alpha\n");
    writeFile(top.filePath("later.txt"), "later\n");
    const QString path = top.filePath("notes.lha");
    TestArchives::runIn(top.path(), "jlha", {"a", path, "a.txt"});
    const QString destination = top.filePath("out");
    QDir().mkpath(destination);
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination}, 1);
    fx.engine.editing()->updateArchive({top.filePath("later.txt")}, 1);
    QVERIFY(!QFile::exists(destination + "/notes.lha"));
    QCOMPARE(fx.engine.ui().oppenedArchiveArrayController->rowCount(), 2);
  }

  // A killed 7-Zip left "<archive>.tmp", a killed arj "ARJTEMP.$00".
  void aStoppedToolLeavesNoTemporaryFile_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("program");
    QTest::addColumn<bool>("killed");
    QTest::newRow("7z killed") << "stopped.7z"
                               << "7z" << true;
    QTest::newRow("arj killed") << "stopped.arj"
                                << "arj" << true;
    QTest::newRow("7z cancelled") << "stopped.7z"
                                  << "7z" << false;
    QTest::newRow("arj cancelled") << "stopped.arj"
                                   << "arj" << false;
  }
  void aStoppedToolLeavesNoTemporaryFile() {
    QFETCH(QString, archive);
    QFETCH(QString, program);
    QFETCH(bool, killed);
    QTemporaryDir top;
    writeFile(top.filePath("a.txt"), "alpha\n");
    writeLongText(top.filePath("long.txt"), 3000000);
    const QString path = top.filePath(archive);
    TestArchives::runIn(top.path(), program, {"a", path, "a.txt"});
    const QByteArray before = contentOf(path);
    Fixture fx;
    fx.open(path);
    const QString input = top.filePath("long.txt");
    QTimer::singleShot(200, [&fx, killed, input] {
      if (killed)
        QProcess::execute("pkill", {"-KILL", "-f", input});
      else
        fx.runner.cancel();
    });
    fx.engine.editing()->updateArchive({top.filePath("long.txt")}, 1);
    QCOMPARE(QDir(top.path()).entryList(QDir::Files, QDir::Name),
             (QStringList{"a.txt", "long.txt", archive}));
    QCOMPARE(contentOf(path), before);
    QVERIFY(!fx.status().isEmpty());
  }

  // lha archives cannot lose entries: the text stays, and the status bar
  // says the tool refused.
  void aRefusedDeletionSaysSo() {
    QTemporaryDir top;
    writeFile(top.filePath("a.txt"), "alpha\n");
    writeFile(top.filePath("b.txt"), "bravo\n");
    const QString path = top.filePath("two.lha");
    TestArchives::runIn(top.path(), "jlha", {"a", path, "a.txt", "b.txt"});
    Fixture fx;
    fx.open(path);
    fx.selectRowsNamed({"a.txt"});
    fx.engine.editing()->btnDeleteSelectedFilesFromArchive();
    QVERIFY(fx.report().endsWith("\n -- Deletion completed, archive updated. --"));
    QVERIFY(fx.status().contains("failed"));
  }
};

QTEST_MAIN(SafeExtractionTest)
#include "tst_safe_extraction.moc"
