#include "FakeToolRunner.h"
#include "RecordingJobUi.h"
#include "create/CompressionJob.h"
#include "engine/ProcessToolRunner.h"
#include "engine/ToolLocations.h"
#include "support/TestArchives.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

namespace {

using TestArchives::Tree;
using TestArchives::treeUnder;

Tree withoutDsStore(Tree tree) {
  for (const QString& key : tree.keys()) {
    if (key.endsWith(".DS_Store"))
      tree.remove(key);
  }
  return tree;
}

}  // namespace

// The compression job with the real tools: it makes archives that the
// tools themselves read back as the selected files.
class CompressionJobTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir sources_;
  QString tree_;
  QString single_;

  CompressionRequest request(const QString& method, const QString& output) const {
    CompressionRequest request;
    request.settings.init();
    request.settings.compressionMethod = method;
    request.itemToCompress = output;
    request.items = {tree_, single_};
    request.startFolder = QDir::currentPath();
    request.stubBundle = ToolLocations::sharedResourcesFolder() + "/sfxmodule.app";
    request.homeFolder = sources_.path();
    return request;
  }

  void runJob(CompressionRequest request, RecordingJobUi& ui, ToolRunner& runner) {
    CompressionJob job(std::move(request), runner, ui, [] { return false; });
    job.run();
  }

  Tree extracted(const QString& archive, const QString& folder) {
    QDir().mkpath(folder);
    TestArchives::runIn(folder, "7z", {"x", "-y", archive});
    return treeUnder(folder);
  }

  Tree expectedTree(const QString& prefix) const {
    Tree expected;
    const Tree tree = withoutDsStore(treeUnder(sources_.path() + "/tree"));
    for (auto [path, content] : tree.asKeyValueRange())
      expected.insert(prefix + "tree/" + path, content);
    QFile single(single_);
    single.open(QIODevice::ReadOnly);
    expected.insert(prefix + "-single file.txt", single.readAll());
    return expected;
  }

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(sources_.path(), "tree");
    QFile store(sources_.filePath("tree/dir one/.DS_Store"));
    store.open(QIODevice::WriteOnly);
    store.write("finder");
    store.close();
    single_ = sources_.filePath("-single file.txt");
    QFile single(single_);
    single.open(QIODevice::WriteOnly);
    single.write("one file with a dash and a space\n");
    tree_ = sources_.filePath("tree");
  }

  void sevenZipFormatsHoldTheSelection_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("archive");
    QTest::newRow("zip") << "-tzip"
                         << "out.zip";
    QTest::newRow("7z") << "-t7z"
                        << "out.7z";
    QTest::newRow("tar") << "-ttar"
                         << "out.tar";
  }
  void sevenZipFormatsHoldTheSelection() {
    QFETCH(QString, method);
    QFETCH(QString, archive);
    QTemporaryDir output;
    CompressionRequest job = request(method, output.filePath("out"));
    job.excludeDsStore = true;
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY2(ui.failures.isEmpty(), qPrintable(ui.failures.join('\n')));
    QVERIFY(ui.calls.contains("name " + archive));
    QCOMPARE(extracted(output.filePath(archive), output.filePath("x")), expectedTree(QString()));
    QCOMPARE(ui.calls.last(), QString("hide compressing window"));
    QVERIFY(ui.calls.contains("stop spin"));
  }

  void gzipAndBzip2WrapATar_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("archive");
    QTest::newRow("gzip") << "-tgzip"
                          << "out.tar.gz";
    QTest::newRow("bzip2") << "-tbzip2"
                           << "out.tar.bz2";
  }
  void gzipAndBzip2WrapATar() {
    QFETCH(QString, method);
    QFETCH(QString, archive);
    QTemporaryDir output;
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(request(method, output.filePath("out")), ui, runner);
    QVERIFY(!QFile::exists(output.filePath("out.tar")));
    const QString inner = output.filePath("inner");
    QDir().mkpath(inner);
    TestArchives::runIn(inner, "7z", {"x", "-y", output.filePath(archive)});
    Tree tree = extracted(inner + "/out.tar", output.filePath("x"));
    QCOMPARE(withoutDsStore(tree), expectedTree(QString()));
  }

  void arjAndLhaStoreTheFullPaths_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("extractor");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("arj") << "arj"
                         << "out.arj"
                         << "arj" << QStringList{"x", "-y", "%A"};
    QTest::newRow("lha") << "lha"
                         << "out.lha"
                         << "lhasa" << QStringList{"xf", "%A"};
  }
  void arjAndLhaStoreTheFullPaths() {
    QFETCH(QString, method);
    QFETCH(QString, archive);
    QFETCH(QString, extractor);
    QFETCH(QStringList, arguments);
    QTemporaryDir output;
    CompressionRequest job = request(method, output.filePath("out"));
    // jlha cannot store the sample tree's non-Latin-1 name.
    if (method == "lha")
      job.items = {single_};
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY2(ui.failures.isEmpty(), qPrintable(ui.failures.join('\n')));
    const QString folder = output.filePath("x");
    QDir().mkpath(folder);
    arguments.replaceInStrings("%A", output.filePath(archive));
    TestArchives::runIn(folder, extractor, arguments);
    const QString prefix = sources_.path().mid(1) + '/';
    Tree expected = expectedTree(prefix);
    // Neither arj nor lha is given the exclusion switch.
    const QString store = prefix + "tree/dir one/.DS_Store";
    expected.insert(store, "finder");
    if (method == "lha") {
      expected = {{prefix + "-single file.txt", expected.value(prefix + "-single file.txt")}};
    }
    QCOMPARE(treeUnder(folder), expected);
  }

  void lhaRefusesNamesOutsideLatin1() {
    QTemporaryDir output;
    QDir().mkpath(output.filePath("names/日本"));
    QFile(output.filePath("names/日本/中文.txt")).open(QIODevice::WriteOnly);
    QFile(output.filePath("names/café.txt")).open(QIODevice::WriteOnly);
    CompressionRequest job = request("lha", output.filePath("out"));
    job.items = {single_, output.filePath("names")};
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY(runner.runs.isEmpty());
    QCOMPARE(ui.alerts.size(), 1);
    QVERIFY(ui.alerts[0].contains("中文.txt"));
    QVERIFY(ui.alerts[0].contains("names/日本\n") || ui.alerts[0].endsWith("names/日本"));
    QVERIFY(!ui.alerts[0].contains("café"));
    QVERIFY(ui.calls.contains("stop spin"));
  }

  void levelAndExclusionReachTheTools_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QStringList>("firstRun");
    QTest::newRow("zip") << "-tzip" << QStringList{"7za",     "a",  "-tzip", "-xr!.DS_Store",
                                                   "out.zip", "%T", "-mx9",  "-ssc"};
    QTest::newRow("rar") << "rar"
                         << QStringList{"r", "a", "out.rar", "%T", "-x*DS_Store", "-m5", "-ep1"};
    QTest::newRow("arj, no exclusion")
        << "arj" << QStringList{"arj", "a", "-y", "-m4", "-r", "out.arj", "%T"};
    QTest::newRow("lha, no exclusion") << "lha" << QStringList{"lha", "a", "-o7", "out.lha", "%T"};
  }
  void levelAndExclusionReachTheTools() {
    QFETCH(QString, method);
    QFETCH(QStringList, firstRun);
    QTemporaryDir output;
    CompressionRequest job = request(method, output.filePath("out"));
    job.settings.useLevel(*JobSettings::levelAt(5));
    job.excludeDsStore = true;
    job.items = {single_};
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY(!runner.runs.isEmpty());
    firstRun.replaceInStrings("%T", single_);
    QCOMPARE(runner.runs[0].tool(), firstRun.takeFirst());
    QCOMPARE(runner.runs[0].arguments, firstRun);
    QCOMPARE(QDir(runner.runs[0].directoryAtLaunch).canonicalPath(),
             QDir(output.path()).canonicalPath());
  }

  void passwordsProtectZipAnd7z_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("archive");
    QTest::newRow("zip") << "-tzip"
                         << "p.zip";
    QTest::newRow("7z") << "-t7z"
                        << "p.7z";
  }
  void passwordsProtectZipAnd7z() {
    QFETCH(QString, method);
    QFETCH(QString, archive);
    QTemporaryDir output;
    CompressionRequest job = request(method, output.filePath("p"));
    job.passwordProtected = true;
    job.password = job.passwordConfirmation = "s3cret word";
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY(!ui.calls.contains("stop spin"));
    const QString folder = output.filePath("x");
    QDir().mkpath(folder);
    QVERIFY(
        TestArchives::runIn(folder, "7z", {"t", "-pwrong", output.filePath(archive)}).isEmpty());
    TestArchives::runIn(folder, "7z", {"x", "-y", "-ps3cret word", output.filePath(archive)});
    QCOMPARE(withoutDsStore(treeUnder(folder)), expectedTree(QString()));
  }

  void aProtectedZipIsNeverUploaded() {
    QTemporaryDir output;
    CompressionRequest job = request("-tzip", output.filePath("p"));
    job.passwordProtected = true;
    job.password = job.passwordConfirmation = "x";
    job.upload = true;
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY(ui.uploads.isEmpty());

    CompressionRequest open = request("-tzip", output.filePath("o"));
    open.upload = true;
    runJob(open, ui, runner);
    QCOMPARE(ui.uploads, QStringList{"o.zip"});
  }

  void aPasswordMismatchBlinksAndRunsNothing() {
    QTemporaryDir output;
    CompressionRequest job = request("-t7z", output.filePath("p"));
    job.passwordProtected = true;
    job.password = "one";
    job.passwordConfirmation = "two";
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY(runner.runs.isEmpty());
    QVERIFY(ui.alerts.isEmpty());
    QCOMPARE(ui.calls.count("toggle create window"), 4);
    QVERIFY(ui.createWindowVisible);
    QVERIFY(!ui.calls.contains("show compressing window"));
  }

  void splitVolumesJoinBackIntoTheArchive_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("archive");
    QTest::newRow("7z") << "-t7z"
                        << "s.7z";
    QTest::newRow("zip") << "-tzip"
                         << "s.zip";
  }
  void splitVolumesJoinBackIntoTheArchive() {
    QFETCH(QString, method);
    QFETCH(QString, archive);
    QTemporaryDir output;
    QFile big(sources_.filePath("big.bin"));
    big.open(QIODevice::WriteOnly);
    // Random bytes: the split run packs the archive once more, with 7-Zip's
    // own default level.
    QByteArray noise(300 * 1024, Qt::Uninitialized);
    QRandomGenerator(7).fillRange(reinterpret_cast<quint32*>(noise.data()), noise.size() / 4);
    big.write(noise);
    big.close();
    CompressionRequest job = request(method, output.filePath("s"));
    job.items = {big.fileName()};
    job.settings.useLevel(*JobSettings::levelAt(0));
    job.split = true;
    job.splitSizeText = "100";
    job.settings.splitVolumesSizeType = "k";
    ProcessToolRunner runner;
    RecordingJobUi ui;
    CompressionJob compression(job, runner, ui, [] { return false; });
    compression.run();
    QCOMPARE(compression.splitVolumesSize(), QString("-v100k"));
    QVERIFY(!QFile::exists(output.filePath(archive)));
    QVERIFY(QFile::exists(output.filePath(archive + ".part.001")));
    QVERIFY(QFile::exists(output.filePath(archive + ".part.002")));
    const QString joined = output.filePath("joined");
    QDir().mkpath(joined);
    TestArchives::runIn(joined, "7z", {"x", "-y", output.filePath(archive + ".part.001")});
    QVERIFY(QFile::exists(joined + "/" + archive));
    QCOMPARE(extracted(joined + "/" + archive, output.filePath("x")).value("big.bin").size(),
             big.size());
  }

  void everyItemMakesAnArchivePerItem() {
    QTemporaryDir output;
    CompressionRequest job = request("-tzip", "unknown");
    job.everyItem = true;
    ProcessToolRunner runner;
    RecordingJobUi ui;
    ui.archivesFolder = output.path();
    runJob(job, ui, runner);
    QVERIFY(ui.calls.contains("choose folder"));
    QVERIFY(QFile::exists(output.filePath("tree.zip")));
    QVERIFY(QFile::exists(output.filePath("-single file.zip")));
  }

  void everyItemWithGzipCompressesOnlyTheLastTar() {
    QTemporaryDir output;
    CompressionRequest job = request("-tgzip", "unknown");
    job.everyItem = true;
    ProcessToolRunner runner;
    RecordingJobUi ui;
    ui.archivesFolder = output.path();
    runJob(job, ui, runner);
    QVERIFY(QFile::exists(output.filePath("tree.tar")));
    QVERIFY(QFile::exists(output.filePath("-single file.tar.gz")));
    QVERIFY(!QFile::exists(output.filePath("-single file.tar")));
  }

  void cancellingTheFolderPanelEndsTheJob() {
    CompressionRequest job = request("-tzip", "unknown");
    job.everyItem = true;
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY(runner.runs.isEmpty());
    QVERIFY(!ui.calls.contains("stop spin"));
  }

  void anExistingNameGetsTheSuffixOnce() {
    QTemporaryDir output;
    QDir().mkpath(output.filePath("taken.app"));
    QFile other(output.filePath("taken.rar"));
    other.open(QIODevice::WriteOnly);
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(request("-tzip", output.filePath("taken")), ui, runner);
    QCOMPARE(
        ui.alerts,
        QStringList{
            "File with same name already exists: An additional suffix will be added to the name"});
    const QString name = runner.runs.value(0).arguments.value(2);
    QVERIFY2(QRegularExpression("^taken_[a-zA-Z0-9]{4}\\.zip$").match(name).hasMatch(),
             qPrintable(name));
  }

  void rarPaths_data() {
    QTest::addColumn<bool>("protect");
    QTest::addColumn<bool>("split");
    QTest::addColumn<QList<QStringList>>("runs");
    QTest::newRow("unprotected, split, note")
        << false << true
        << QList<QStringList>{{"a", "out.rar", "%S", "-m2", "-ep1"},
                              {"a", "out.rar.split", "out.rar", "-ep1", "-m0", "-v2048k"},
                              {"c", "out.rar", "-z%H/note.tmp"}};
    QTest::newRow("protected, note")
        << true << false
        << QList<QStringList>{{"a", "-pabc", "out.rar", "%S", "-m2", "-ep1"},
                              {"c", "out.rar", "-z%H/note.tmp"}};
  }
  void rarPaths() {
    QFETCH(bool, protect);
    QFETCH(bool, split);
    QFETCH(QList<QStringList>, runs);
    QTemporaryDir output;
    CompressionRequest job = request("rar", output.filePath("out"));
    job.items = {single_};
    job.passwordProtected = protect;
    job.password = job.passwordConfirmation = "abc";
    job.split = split;
    job.splitSizeText = "2048";
    job.notes = "Read me first";
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QCOMPARE(runner.runs.size(), runs.size());
    for (qsizetype i = 0; i < runs.size(); ++i) {
      QCOMPARE(runner.runs[i].tool(), QString("r"));
      QCOMPARE(runner.runs[i].arguments,
               runs[i].replaceInStrings("%S", single_).replaceInStrings("%H", sources_.path()));
    }
    QVERIFY(ui.calls.contains("content Compressing to rar... Please wait...\n\n"));
    QVERIFY(!QFile::exists(sources_.filePath("note.tmp")));
    // Protected rar archives are made in each item's own folder.
    QCOMPARE(QDir(runner.runs[0].directoryAtLaunch).canonicalPath(),
             QDir(protect ? sources_.path() : output.path()).canonicalPath());
  }

  void writingRarWithoutRarlabIsAMissingProgram() {
    QTemporaryDir output;
    CompressionRequest job = request("rar", output.filePath("out"));
    job.items = {single_};
    job.notes = "note";
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QCOMPARE(ui.alerts.size(), 1);
    QVERIFY2(ui.alerts[0].startsWith("Missing program: r: "), qPrintable(ui.alerts[0]));
    QVERIFY(QDir(output.path()).isEmpty());
    QVERIFY(ui.calls.contains("stop spin"));
  }

  void selfExtractingBundleCarriesTheArchiveAndNote() {
    QTemporaryDir output;
    CompressionRequest job = request("-t7z", output.filePath("gift"));
    job.selfExtracting = true;
    job.notes = "Hello — enjoy";
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    const QString resources = output.filePath("gift.app/Contents/Resources");
    QVERIFY(QFile::exists(resources + "/archive"));
    QVERIFY(!QFile::exists(output.filePath("gift.7z")));
    QFile notes(resources + "/notes.txt");
    QVERIFY(notes.open(QIODevice::ReadOnly));
    QCOMPARE(QStringDecoder(QStringConverter::Utf16).decode(notes.readAll()),
             QString("Hello — enjoy"));

    QProcess stub;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
      environment.remove(variable);
    stub.setProcessEnvironment(environment);
    stub.start(output.filePath("gift.app/Contents/MacOS/sfxmodule"), {});
    QVERIFY(stub.waitForFinished(60000));
    QCOMPARE(stub.exitCode(), 0);
    QCOMPARE(treeUnder(output.filePath("tree")), treeUnder(sources_.filePath("tree")));
  }

  void theJobKeepsItsFolderWhileQuilletMoves() {
    QTemporaryDir output;
    QTemporaryDir elsewhere;
    CompressionRequest job = request("-tzip", output.filePath("moving"));
    job.everyItem = false;
    ProcessToolRunner runner;
    RecordingJobUi ui;
    QThread* worker = QThread::create([&] {
      CompressionJob compression(job, runner, ui, [] { return false; });
      compression.run();
    });
    worker->start();
    while (!worker->wait(1)) {
      QDir::setCurrent(elsewhere.path());
      QDir::setCurrent(sources_.path());
    }
    delete worker;
    QVERIFY(QFile::exists(output.filePath("moving.zip")));
    QVERIFY(QDir(elsewhere.path()).isEmpty());
    QCOMPARE(withoutDsStore(extracted(output.filePath("moving.zip"), output.filePath("x"))),
             expectedTree(QString()));
  }
};

QTEST_GUILESS_MAIN(CompressionJobTest)
#include "tst_compression_job.moc"
