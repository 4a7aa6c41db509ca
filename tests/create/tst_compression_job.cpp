#include "FakeToolRunner.h"
#include "RecordingJobUi.h"
#include "create/CompressionJob.h"
#include "engine/LiteralNames.h"
#include "engine/ToolLocations.h"
#include "platform/ProcessToolRunner.h"
#include "support/TestArchives.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QScopeGuard>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

#include <fcntl.h>
#include <unistd.h>

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

// The files a hostile name would pull in if a tool read it as a wildcard or
// a list file: "a*" matches abc, "?" matches b, and list.txt names secret.txt.
const QStringList kNeighbours = {"secret.txt", "abc", "b", "keep1.txt", "list.txt"};

void writeNeighbours(const QString& folder) {
  for (const QString& name : kNeighbours)
    TestArchives::writeFile(folder + '/' + name, name.toUtf8());
  TestArchives::writeFile(folder + "/list.txt", (folder + "/secret.txt\n").toUtf8());
}

// The paths an archive holds, as 7-Zip's technical listing prints them; a
// compressed tar is unpacked first.
QStringList entriesOf(const QString& archive) {
  QString listed = archive;
  QTemporaryDir unpacked;
  if (archive.endsWith(".gz") || archive.endsWith(".bz2")) {
    TestArchives::runIn(unpacked.path(), "7z", {"x", "-y", archive});
    listed = unpacked.filePath(QDir(unpacked.path()).entryList(QDir::Files).value(0));
  }
  const QString listing =
      QString::fromUtf8(TestArchives::runIn(QDir::tempPath(), "7z", {"l", "-slt", listed}));
  QStringList paths;
  for (const QString& line : listing.section("\n----------\n", 1).split('\n')) {
    if (line.startsWith("Path = "))
      paths << line.mid(7);
  }
  paths.sort();
  return paths;
}

// Where a format keeps an item given by its full path, as 7-Zip lists it:
// 7-Zip's formats keep the name, arj the path without its first "/", lha
// the whole path; the listing prints a newline as "_".
QString listedPath(const QString& method, const QString& item) {
  QString path = method == "arj"   ? item.mid(1)
                 : method == "lha" ? item
                                   : QFileInfo(item).fileName();
  return path.replace('\n', '_');
}

// Writes a file whose name is given as bytes, past Qt's name encoding.
bool writeRawName(const QByteArray& path) {
  const int file = ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL, 0644);
  if (file < 0)
    return false;
  const bool written = ::write(file, "raw\n", 4) == 4;
  return ::close(file) == 0 && written;
}

const QString kCollision =
    "File with same name already exists: An additional suffix will be added to the name";

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

  // One archive per item, into folder.
  void runEveryItem(const QString& method, const QString& folder, RecordingJobUi& ui,
                    ToolRunner& runner) {
    CompressionRequest job = request(method, "unknown");
    job.everyItem = true;
    ui.archivesFolder = folder;
    runJob(job, ui, runner);
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
    QCOMPARE(ui.created, QStringList{"Archive created: " + output.filePath(archive)});
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
    QCOMPARE(ui.created, QStringList{"Archive created: " + output.filePath(archive)});
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

  void hostileNamesReachTheToolsAsThemselves_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("refused");
    const QList<std::pair<const char*, QString>> formats = {
        {"-tzip", "out.zip"},       {"-t7z", "out.7z"}, {"-ttar", "out.tar"},
        {"-tgzip", "out.tar.gz"},   {"arj", "out.arj"}, {"lha", "out.lha"},
        {"-tbzip2", "out.tar.bz2"},
    };
    const QList<std::pair<const char*, QString>> names = {
        {"star", "*"},
        {"a star", "a*"},
        {"question mark", "?"},
        {"7-Zip list file", "@list.txt"},
        {"arj list file", "!list.txt"},
        {"switch", "-rf"},
        {"long switch", "--help"},
        {"quotes", "a \"b\" 'c'"},
        {"newline", "line\nbreak"},
    };
    for (const auto& [method, archive] : formats) {
      for (const auto& [label, name] : names) {
        const bool wildcard = name.contains('*') || name.contains('?');
        QTest::addRow("%s, %s", method, label)
            << method << archive << name << (QString(method) == "arj" && wildcard);
      }
    }
  }
  void hostileNamesReachTheToolsAsThemselves() {
    QFETCH(QString, method);
    QFETCH(QString, archive);
    QFETCH(QString, name);
    QFETCH(bool, refused);
    QTemporaryDir folder;
    writeNeighbours(folder.path());
    const QString item = folder.filePath(name);
    TestArchives::writeFile(item, "selected\n");
    QTemporaryDir output;
    CompressionRequest job = request(method, output.filePath("out"));
    job.items = {item};
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    if (refused) {
      const LiteralNames::Refusal refusal = LiteralNames::refusalOf(item);
      QCOMPARE(ui.alerts, QStringList{refusal.title + ": " + refusal.message});
      QVERIFY(QDir(output.path()).isEmpty());
      QVERIFY(ui.calls.contains("stop spin"));
      return;
    }
    QVERIFY2(ui.failures.isEmpty(), qPrintable(ui.failures.join('\n')));
    QVERIFY2(ui.alerts.isEmpty(), qPrintable(ui.alerts.join('\n')));
    QCOMPARE(entriesOf(output.filePath(archive)), QStringList{listedPath(method, item)});
  }

  void aNameThatIsNotUtf8NeverBringsOtherFiles_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<bool>("inFolder");
    for (const char* method : {"-tzip", "-t7z", "-ttar", "-tgzip", "-tbzip2", "arj", "lha"}) {
      QTest::addRow("%s, the item", method) << QString(method) << false;
      QTest::addRow("%s, inside the item", method) << QString(method) << true;
    }
  }
  void aNameThatIsNotUtf8NeverBringsOtherFiles() {
    QFETCH(QString, method);
    QFETCH(bool, inFolder);
    QTemporaryDir folder;
    writeNeighbours(folder.path());
    QVERIFY(QDir(folder.path()).mkdir("dir"));
    const QByteArray raw = folder.path().toUtf8() + (inFolder ? "/dir" : "") + "/caf\xe9.txt";
    QVERIFY(writeRawName(raw));
    // Qt cannot name the file to remove it.
    const auto removeRaw = qScopeGuard([&] { ::unlink(raw.constData()); });
    // The item as the selection list holds it: the name as Qt reads it.
    const QString item =
        inFolder ? folder.filePath("dir")
                 : folder.filePath(QDir(folder.path()).entryList({"caf*"}, QDir::Files).value(0));
    QTemporaryDir output;
    CompressionRequest job = request(method, output.filePath("out"));
    job.items = {item};
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    const QString stored = listedPath(method, item);
    QStringList entries;
    for (const QString& archive : QDir(output.path()).entryList(QDir::Files))
      entries += entriesOf(output.filePath(archive));
    for (const QString& entry : entries)
      QVERIFY2(entry == stored || entry.startsWith(stored + '/'), qPrintable(entry));
    // Either the item is in the archive or the user is told why not.
    QVERIFY(!entries.isEmpty() || !ui.failures.isEmpty() || !ui.alerts.isEmpty());
  }

  void everyItemLeavesExistingFilesAlone_data() {
    QTest::addColumn<QString>("method");
    // Archives already in the output folder, each made as this type.
    QTest::addColumn<QString>("existingType");
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<QStringList>("items");
    QTest::addColumn<bool>("intoItemsFolder");
    // The new files, "#" standing for the random suffix.
    QTest::addColumn<QStringList>("made");
    QTest::newRow("gzip beside a tar of that name")
        << "-tgzip"
        << "-ttar" << QStringList{"photo.tar"} << QStringList{"photo.jpg"} << false
        << QStringList{"photo_#.tar.gz"};
    QTest::newRow("gzip of a tar into its own folder")
        << "-tgzip" << QString() << QStringList() << QStringList{"data.tar"} << true
        << QStringList{"data_#.tar.gz"};
    QTest::newRow("bzip2 of a tar into its own folder")
        << "-tbzip2" << QString() << QStringList() << QStringList{"data.tar"} << true
        << QStringList{"data_#.tar.bz2"};
    QTest::newRow("zip beside a zip of that name")
        << "-tzip"
        << "-tzip" << QStringList{"photo.zip"} << QStringList{"photo.jpg"} << false
        << QStringList{"photo_#.zip"};
    QTest::newRow("zip of a zip into its own folder")
        << "-tzip" << QString() << QStringList() << QStringList{"data.zip"} << true
        << QStringList{"data_#.zip"};
    // 7za keeps a name that has a dot as it is, so "photo.tar" is the zip.
    QTest::newRow("zip whose name keeps a dot, beside that file")
        << "-tzip"
        << "-tzip" << QStringList{"photo.tar"} << QStringList{"photo.tar.gz"} << false
        << QStringList{"photo.tar_#"};
    QTest::newRow("arj beside an archive of that name")
        << "arj"
        << "-tzip" << QStringList{"photo.zip"} << QStringList{"photo.jpg"} << false
        << QStringList{"photo_#.arj"};
    const QStringList sameBase = {"photo.jpg", "photo.png"};
    QTest::newRow("two items, one name, zip") << "-tzip" << QString() << QStringList() << sameBase
                                              << false << QStringList{"photo.zip", "photo_#.zip"};
    QTest::newRow("two items, one name, 7z") << "-t7z" << QString() << QStringList() << sameBase
                                             << false << QStringList{"photo.7z", "photo_#.7z"};
    // Only the last tar is compressed.
    QTest::newRow("two items, one name, gzip")
        << "-tgzip" << QString() << QStringList() << sameBase << false
        << QStringList{"photo.tar", "photo_#.tar.gz"};
    QTest::newRow("two items, one name, arj") << "arj" << QString() << QStringList() << sameBase
                                              << false << QStringList{"photo.arj", "photo_#.arj"};
    QTest::newRow("two items, one name, lha") << "lha" << QString() << QStringList() << sameBase
                                              << false << QStringList{"photo.lha", "photo_#.lha"};
  }
  void everyItemLeavesExistingFilesAlone() {
    QFETCH(QString, method);
    QFETCH(QString, existingType);
    QFETCH(QStringList, existing);
    QFETCH(QStringList, items);
    QFETCH(bool, intoItemsFolder);
    QFETCH(QStringList, made);
    QTemporaryDir folder;
    QTemporaryDir elsewhere;
    const QString output = intoItemsFolder ? folder.path() : elsewhere.path();
    CompressionRequest job = request(method, "unknown");
    job.everyItem = true;
    job.items.clear();
    for (const QString& name : items) {
      job.items << folder.filePath(name);
      TestArchives::writeFile(job.items.last(), name.toUtf8());
    }
    TestArchives::writeFile(folder.filePath("user.txt"), "the user's own");
    for (const QString& name : existing)
      TestArchives::runIn(output, "7z", {"a", existingType, name, folder.filePath("user.txt")});
    const Tree before = treeUnder(output);
    const Tree sources = treeUnder(folder.path());
    ProcessToolRunner runner;
    RecordingJobUi ui;
    ui.archivesFolder = output;
    runJob(job, ui, runner);
    QVERIFY2(ui.failures.isEmpty(), qPrintable(ui.failures.join('\n')));

    Tree after = treeUnder(output);
    for (auto [path, content] : before.asKeyValueRange())
      QVERIFY2(after.contains(path) && after.take(path) == content, qPrintable(path));
    const Tree sourcesAfter = treeUnder(folder.path());
    for (auto [path, content] : sources.asKeyValueRange())
      QVERIFY2(sourcesAfter.value(path) == content, qPrintable(path));
    QStringList newFiles = after.keys();
    QStringList stored;
    for (const QString& pattern : made) {
      const QRegularExpression name(QRegularExpression::anchoredPattern(
          QRegularExpression::escape(pattern).replace("\\#", "[a-zA-Z0-9]{4}")));
      const qsizetype at = newFiles.indexOf(name);
      QVERIFY2(at >= 0, qPrintable(pattern + " not in " + after.keys().join(", ")));
      for (const QString& entry : entriesOf(output + '/' + newFiles.takeAt(at)))
        stored << QFileInfo(entry).fileName();
    }
    QVERIFY2(newFiles.isEmpty(), qPrintable(newFiles.join(", ")));
    stored.sort();
    QCOMPARE(stored, items);
    QCOMPARE(ui.alerts, QStringList(made.filter("#").size(), kCollision));
  }

  void levelAndExclusionReachTheTools_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QStringList>("firstRun");
    QTest::newRow("zip") << "-tzip" << QStringList{"7za",     "a",  "-tzip", "-xr!.DS_Store",
                                                   "out.zip", "%T", "-mx9",  "-ssc"};
    QTest::newRow("rar") << "rar"
                         << QStringList{"r", "a", "out.rar", "%T", "-x*DS_Store", "-m5", "-ep1"};
    // A file goes without "-r", which would add its namesakes from the
    // folders below.
    QTest::newRow("arj, no exclusion")
        << "arj" << QStringList{"arj", "a", "-y", "-m4", "out.arj", "%T"};
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

  void namesReachEachToolLiterally_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("item");
    // Each run as the tool and its arguments, %I for the item.
    QTest::addColumn<QList<QStringList>>("runs");
    // The name the alert refuses, when nothing runs.
    QTest::addColumn<QString>("refused");
    QTest::newRow("zip, ordinary")
        << "-tzip"
        << "out"
        << "plain.txt" << QList<QStringList>{{"7za", "a", "-tzip", "out.zip", "%I", "-mx9", "-ssc"}}
        << QString();
    QTest::newRow("zip, wildcard item")
        << "-tzip"
        << "out"
        << "a*"
        << QList<QStringList>{{"7za", "a", "-spd", "-tzip", "out.zip", "%I", "-mx9", "-ssc"}}
        << QString();
    QTest::newRow("zip, switch-like archive")
        << "-tzip"
        << "-out"
        << "plain.txt"
        << QList<QStringList>{{"7za", "a", "-tzip", "./-out.zip", "%I", "-mx9", "-ssc"}}
        << QString();
    QTest::newRow("gzip, ordinary")
        << "-tgzip"
        << "out"
        << "plain.txt"
        << QList<QStringList>{{"7za", "a", "-ttar", "out.tar", "%I", "-ssc"},
                              {"7za", "a", "-tgzip", "out.tar.gz", "out.tar", "-mx9", "-ssc"}}
        << QString();
    QTest::newRow("gzip, list-file archive, wildcard item")
        << "-tgzip"
        << "@out"
        << "?"
        << QList<QStringList>{{"7za", "a", "-spd", "-ttar", "./@out.tar", "%I", "-ssc"},
                              {"7za", "a", "-tgzip", "./@out.tar.gz", "./@out.tar", "-mx9", "-ssc"}}
        << QString();
    QTest::newRow("rar, ordinary")
        << "rar"
        << "out"
        << "plain.txt" << QList<QStringList>{{"r", "a", "out.rar", "%I", "-m5", "-ep1"}}
        << QString();
    QTest::newRow("rar, list-file archive")
        << "rar"
        << "@out"
        << "plain.txt" << QList<QStringList>{{"r", "a", "./@out.rar", "%I", "-m5", "-ep1"}}
        << QString();
    QTest::newRow("rar, wildcard item") << "rar"
                                        << "out"
                                        << "a*" << QList<QStringList>{} << "%I";
    QTest::newRow("rar, wildcard archive") << "rar"
                                           << "out*"
                                           << "plain.txt" << QList<QStringList>{} << "out*.rar";
    QTest::newRow("arj, ordinary")
        << "arj"
        << "out"
        << "plain.txt" << QList<QStringList>{{"arj", "a", "-y", "-m4", "-r", "out.arj", "%I"}}
        << QString();
    QTest::newRow("arj, list-file archive")
        << "arj"
        << "!out"
        << "plain.txt" << QList<QStringList>{{"arj", "a", "-y", "-m4", "-r", "./!out.arj", "%I"}}
        << QString();
    QTest::newRow("arj, wildcard item") << "arj"
                                        << "out"
                                        << "?" << QList<QStringList>{} << "%I";
    QTest::newRow("lha, ordinary")
        << "lha"
        << "out"
        << "plain.txt" << QList<QStringList>{{"lha", "a", "-o7", "out.lha", "%I"}} << QString();
    QTest::newRow("lha, wildcard item and switch-like archive")
        << "lha"
        << "-out"
        << "*" << QList<QStringList>{{"lha", "a", "-o7", "./-out.lha", "%I"}} << QString();
  }
  void namesReachEachToolLiterally() {
    QFETCH(QString, method);
    QFETCH(QString, output);
    QFETCH(QString, item);
    QFETCH(QList<QStringList>, runs);
    QFETCH(QString, refused);
    QTemporaryDir folder;
    CompressionRequest job = request(method, folder.filePath(output));
    job.settings.useLevel(*JobSettings::levelAt(5));
    job.items = {sources_.filePath(item)};
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QCOMPARE(runner.runs.size(), runs.size());
    for (qsizetype i = 0; i < runs.size(); ++i) {
      runs[i].replaceInStrings("%I", job.items[0]);
      QCOMPARE(runner.runs[i].tool(), runs[i].takeFirst());
      QCOMPARE(runner.runs[i].arguments, runs[i]);
    }
    if (!refused.isEmpty()) {
      const LiteralNames::Refusal refusal =
          LiteralNames::refusalOf(refused.replace("%I", job.items[0]));
      QCOMPARE(ui.alerts, QStringList{refusal.title + ": " + refusal.message});
      QVERIFY(ui.calls.contains("stop spin"));
    }
  }

  void aProtectedJobRefusesAWildcardForRar() {
    QTemporaryDir output;
    CompressionRequest job = request("rar", output.filePath("out"));
    job.items = {sources_.filePath("a*")};
    job.passwordProtected = true;
    job.password = job.passwordConfirmation = "abc";
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QVERIFY(runner.runs.isEmpty());
    QCOMPARE(ui.alerts.size(), 1);
    QVERIFY(ui.alerts[0].startsWith(LiteralNames::refusalOf(job.items[0]).title));
    QCOMPARE(ui.calls.last(), QString("hide compressing window"));
  }

  void aProtectedJobOfEveryItemAddsToNoExistingArchive() {
    QTemporaryDir output;
    TestArchives::writeFile(output.filePath("unknown.zip"), "the user's own");
    CompressionRequest job = request("-tzip", "unknown");
    job.everyItem = true;
    job.passwordProtected = true;
    job.password = job.passwordConfirmation = "abc";
    FakeToolRunner runner;
    RecordingJobUi ui;
    ui.archivesFolder = output.path();
    runJob(job, ui, runner);
    QCOMPARE(runner.runs.size(), 2);
    const QString name = runner.runs[0].arguments.value(3);
    QVERIFY2(QRegularExpression("^unknown_[a-zA-Z0-9]{4}\\.zip$").match(name).hasMatch(),
             qPrintable(name));
    QCOMPARE(runner.runs[1].arguments.value(3), name);
    QCOMPARE(ui.alerts, QStringList{kCollision});
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
    // The name is the job's own folder's, wherever Quillet's current one is.
    QCOMPARE(QFileInfo(ui.uploadFolders.value(0)).canonicalFilePath(),
             QFileInfo(output.path()).canonicalFilePath());
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
    // Named after the archive but there before: not one of its volumes.
    TestArchives::writeFile(output.filePath(archive + ".partial"), "keep");
    ProcessToolRunner runner;
    RecordingJobUi ui;
    CompressionJob compression(job, runner, ui, [] { return false; });
    compression.run();
    QCOMPARE(compression.splitVolumesSize(), QString("-v100k"));
    QVERIFY(!QFile::exists(output.filePath(archive)));
    QVERIFY(QFile::exists(output.filePath(archive + ".part.001")));
    QVERIFY(QFile::exists(output.filePath(archive + ".part.002")));
    const qsizetype volumes = QDir(output.path()).entryList(QDir::Files).size() - 1;
    QCOMPARE(ui.created, QStringList{QString("Archive created: %1 in %2 volumes")
                                         .arg(output.filePath(archive + ".part.001"))
                                         .arg(volumes)});
    const QString joined = output.filePath("joined");
    QDir().mkpath(joined);
    TestArchives::runIn(joined, "7z", {"x", "-y", output.filePath(archive + ".part.001")});
    QVERIFY(QFile::exists(joined + "/" + archive));
    QCOMPARE(extracted(joined + "/" + archive, output.filePath("x")).value("big.bin").size(),
             big.size());
  }

  void everyItemMakesAnArchivePerItem() {
    QTemporaryDir output;
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runEveryItem("-tzip", output.path(), ui, runner);
    QVERIFY(ui.calls.contains("choose folder"));
    QVERIFY(QFile::exists(output.filePath("tree.zip")));
    QVERIFY(QFile::exists(output.filePath("-single file.zip")));
    QCOMPARE(ui.created, QStringList{"2 archives created in " + output.path()});
  }

  void aFailedRowReportsNothingCreated() {
    QTemporaryDir output;
    FakeToolRunner runner;
    ToolResult refused;
    refused.exitCode = 2;
    refused.errors = "ERROR: disk full\n";
    runner.answer(
        "7za", [](const QStringList& arguments) { return arguments.contains("-tzip"); }, refused);
    RecordingJobUi ui;
    runEveryItem("-tzip", output.path(), ui, runner);
    QVERIFY(!ui.failures.isEmpty());
    QVERIFY(ui.created.isEmpty());
  }

  void everyItemWithGzipCompressesOnlyTheLastTar() {
    QTemporaryDir output;
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runEveryItem("-tgzip", output.path(), ui, runner);
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
    QCOMPARE(ui.created, QStringList{"Archive created: " + output.filePath("gift.app")});
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

  void aStubThatCannotBeCopiedMakesNoBundle() {
    QTemporaryDir output;
    CompressionRequest job = request("-t7z", output.filePath("gift"));
    job.selfExtracting = true;
    job.stubBundle = output.filePath("no such stub.app");
    ProcessToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QCOMPARE(ui.failures.size(), 1);
    QVERIFY(ui.created.isEmpty());
    QVERIFY(!QFileInfo::exists(output.filePath("gift.app")));
    QVERIFY(QFile::exists(output.filePath("gift.7z")));
  }

  // Protected rar archives go beside each item: a name taken in one of
  // those folders gets its suffix there, and nothing is added to.
  void protectedRarNamesAreFreeInEveryItemsFolder() {
    QTemporaryDir first;
    QTemporaryDir second;
    TestArchives::writeFile(first.filePath("a.txt"), "a");
    TestArchives::writeFile(second.filePath("b.txt"), "b");
    TestArchives::writeFile(second.filePath("out.rar"), "someone else's");
    CompressionRequest job = request("rar", first.filePath("out"));
    job.items = {first.filePath("a.txt"), second.filePath("b.txt")};
    job.passwordProtected = true;
    job.password = job.passwordConfirmation = "abc";
    FakeToolRunner runner;
    RecordingJobUi ui;
    runJob(job, ui, runner);
    QCOMPARE(runner.runs.size(), 2);
    QCOMPARE(runner.runs[0].arguments.value(2), QString("out.rar"));
    const QString name = runner.runs[1].arguments.value(2);
    QVERIFY2(QRegularExpression("^out_[a-zA-Z0-9]{4}\\.rar$").match(name).hasMatch(),
             qPrintable(name));
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
