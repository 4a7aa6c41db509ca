#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "app/CompressOnDrop.h"
#include "app/OnDropCompressingWindow.h"
#include "app/OnDropUi.h"
#include "engine/ToolLocations.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <cstdlib>
#include <functional>

namespace {

using TestArchives::contentOf;
using TestArchives::writeFile;

const QString kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
const QString kCollision =
    "File with same name already exists: An additional suffix will be added to the name";

// Records what the job shows, one line per call.
class RecordingUi : public OnDropUi {
 public:
  void showCompressingWindow() override { calls << "show window"; }
  void setCompressionSpinning(bool spinning) override {
    calls << (spinning ? "spin" : "stop spin");
  }
  void setCompressingArchiveName(const QString& name) override { calls << "name " + name; }
  void setProgressRange(int maximum, int value) override {
    calls << QString("progress %1/%2").arg(value).arg(maximum);
  }
  void setProgressValue(int value) override { calls << QString("progress %1").arg(value); }
  void hideCompressingWindow() override { calls << "hide window"; }
  void alert(const QString& title, const QString& message) override {
    alerts << title + ": " + message;
  }
  void reportFailure(const QString& message) override { failures << message; }

  QStringList calls;
  QStringList alerts;
  QStringList failures;
};

// A fake runner that can act while a tool "runs".
class ActingRunner : public FakeToolRunner {
 public:
  ToolResult run(const ToolRun& run) override {
    const ToolResult result = FakeToolRunner::run(run);
    if (whileRunning)
      return whileRunning(static_cast<int>(runs.size()) - 1, result);
    return result;
  }
  std::function<ToolResult(int index, ToolResult result)> whileRunning;
};

// What a freshly started process draws first: rand() is never seeded.
QString suffixesOfFreshProcess(int count) {
  std::srand(1);
  QString drawn;
  for (int i = 0; i < count * 4; ++i)
    drawn += kLetters[std::rand() % kLetters.size()];
  std::srand(1);
  return drawn;
}

// The last components of an archive's entries, as 7-Zip lists them (arj
// and lha keep the files' folders).
QStringList namesIn(const QString& archive) {
  const QString listing =
      QString::fromUtf8(TestArchives::runIn(QDir::tempPath(), "7z", {"l", "-slt", archive}));
  QStringList names;
  for (const QString& line : listing.section("\n----------\n", 1).split('\n')) {
    if (line.startsWith("Path = "))
      names << QFileInfo(line.mid(7)).fileName();
  }
  names.sort();
  return names;
}

// Every file of the archive by its name, with its bytes.
TestArchives::Tree unpacked(const QString& archive) {
  QTemporaryDir into;
  TestArchives::runIn(into.path(), "7z", {"e", "-y", archive});
  return TestArchives::treeUnder(into.path());
}

OnDropRequest dropOf(const QStringList& files, const QString& method, const QString& level = "2") {
  OnDropRequest request;
  request.archiveFile = files.value(0);
  request.droppedFilesToCompress = files;
  request.method = method;
  request.level = level;
  request.firstNameIsArchiveName = true;
  return request;
}

QStringList substituted(QStringList vector, const QString& archive, const QString& file) {
  for (QString& argument : vector) {
    if (argument == "A")
      argument = archive;
    else if (argument == "F")
      argument = file;
  }
  return vector;
}

QString toolOf(const QString& method) {
  if (method == "RAR")
    return "r";
  if (method == "ARJ")
    return "arj";
  if (method == "LHA")
    return "lha";
  return "7za";
}

}  // namespace

// Packing files handed over from outside: exact vectors with a fake runner,
// real archives with the real tools.
class CompressOnDropTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  int folders_ = 0;

  // A fresh folder holding the given files, each with its name as content.
  QString folderWith(const QStringList& names) {
    const QString folder = work_.filePath(QString::number(++folders_));
    QDir().mkpath(folder);
    for (const QString& name : names)
      writeFile(folder + '/' + name, name.toUtf8() + " content\n");
    return folder;
  }

 private slots:
  void photoIsPackedBesideItself() {
    const QString folder = folderWith({"photo.jpg", "other.jpg"});
    const QString photo = folder + "/photo.jpg";
    PreferencesStore::setText("onDropCompressionMethod", "ZIP");
    PreferencesStore::setText("onDropCompressionLevel", "2");
    PreferencesStore::setText("prefUseFisrstNameOfTheArrayAsArchiveName", "YES");
    ProcessToolRunner runner;
    RecordingUi ui;
    CompressOnDrop job(OnDropRequest::fromPreferences(photo, {photo}, false), runner, ui);
    job.run();

    QCOMPARE(job.archiveName(), QString("photo.jpg.zip"));
    QCOMPARE(namesIn(folder + "/photo.jpg.zip"), QStringList({"photo.jpg"}));
    QCOMPARE(unpacked(folder + "/photo.jpg.zip").value("photo.jpg"), contentOf(photo));
    QVERIFY(ui.alerts.isEmpty() && ui.failures.isEmpty());
  }

  // The suffix comes from the unseeded rand(), so every fresh process
  // draws the same one; an archive left by an earlier run under that name
  // must be neither added to nor replaced.
  void collisionAddsSuffix_data() {
    QTest::addColumn<bool>("earlierRunLeftArchive");
    QTest::newRow("first run") << false;
    QTest::newRow("archive of an earlier run present") << true;
  }
  void collisionAddsSuffix() {
    QFETCH(bool, earlierRunLeftArchive);
    const QString folder = folderWith({"photo.jpg"});
    const QString photo = folder + "/photo.jpg";
    QDir().mkpath(folder + "/photo.jpg.app/Contents");
    const QString suffixes = suffixesOfFreshProcess(2);
    const QString earlier = folder + "/photo.jpg_" + suffixes.left(4) + ".zip";
    if (earlierRunLeftArchive)
      writeFile(earlier, "an earlier archive");
    const QString expected = "photo.jpg_" + suffixes.mid(earlierRunLeftArchive ? 4 : 0, 4) + ".zip";

    ProcessToolRunner runner;
    RecordingUi ui;
    CompressOnDrop job(dropOf({photo}, "ZIP"), runner, ui);
    job.run();

    QCOMPARE(ui.alerts, QStringList({kCollision}));
    QCOMPARE(job.archiveName(), expected);
    QCOMPARE(namesIn(folder + '/' + expected), QStringList({"photo.jpg"}));
    QVERIFY(!QFileInfo::exists(folder + "/photo.jpg.zip"));
    if (earlierRunLeftArchive)
      QCOMPARE(contentOf(earlier), QByteArray("an earlier archive"));
  }

  void levelSwitches_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("level");
    QTest::addColumn<QStringList>("vector");
    // level -> 7za, rar, arj, lha
    const QList<QStringList> table = {
        {"0", "-mx1", "-m1", "-m1", "-o5"}, {"1", "-mx3", "-m2", "-m2", "-o5"},
        {"2", "-mx5", "-m3", "-m3", "-o6"}, {"3", "-mx7", "-m4", "-m4", "-o6"},
        {"4", "-mx9", "-m5", "-m4", "-o7"}, {"7", "-mx3", "-m2", "-m2", "-o5"},
        {"", "-mx3", "-m2", "-m2", "-o5"},  {" 2", "-mx3", "-m2", "-m2", "-o5"},
    };
    for (const QStringList& row : table) {
      const QString& level = row[0];
      auto add = [&](const char* method, const QStringList& vector) {
        QTest::addRow("%s level \"%s\"", method, qPrintable(level)) << method << level << vector;
      };
      add("ZIP", {"a", "-tzip", "A", "F", row[1], "-ssc"});
      add("7z", {"a", "-t7z", "A", "F", row[1], "-ssc"});
      add("RAR", {"a", "A", "F", row[2], "-ep1"});
      add("ARJ", {"a", "-y", row[3], "A", "F"});
      add("LHA", {"a", row[4], "A", "F"});
    }
  }
  void levelSwitches() {
    QFETCH(QString, method);
    QFETCH(QString, level);
    QFETCH(QStringList, vector);
    const QString folder = folderWith({"f.txt"});
    const QString file = folder + "/f.txt";
    FakeToolRunner runner;
    RecordingUi ui;
    CompressOnDrop(dropOf({file}, method, level), runner, ui).run();
    QCOMPARE(runner.runs.size(), 1);
    QCOMPARE(runner.runs[0].tool(), toolOf(method));
    QCOMPARE(runner.runs[0].arguments, substituted(vector, "f.txt." + method.toLower(), file));
    QCOMPARE(runner.runs[0].directoryAtLaunch, folder);
  }

  void exclusionAndRecursion_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<bool>("exclude");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QStringList>("vector");
    QTest::newRow("ZIP excluding")
        << "ZIP" << true << "f.txt"
        << QStringList{"a", "-tzip", "-xr!.DS_Store", "A", "F", "-mx5", "-ssc"};
    QTest::newRow("7z excluding") << "7z" << true << "f.txt"
                                  << QStringList{"a", "-t7z", "-xr!.DS_Store", "A",
                                                 "F", "-mx5", "-ssc"};
    QTest::newRow("RAR excluding")
        << "RAR" << true << "f.txt" << QStringList{"a", "A", "F", "-x*DS_Store", "-m3", "-ep1"};
    QTest::newRow("ARJ takes no exclusion")
        << "ARJ" << true << "f.txt" << QStringList{"a", "-y", "-m3", "A", "F"};
    QTest::newRow("LHA takes no exclusion")
        << "LHA" << true << "f.txt" << QStringList{"a", "-o6", "A", "F"};
    QTest::newRow("ZIP folder") << "ZIP" << false << "docs"
                                << QStringList{"a", "-tzip", "A", "F", "-mx5", "-ssc"};
    QTest::newRow("ARJ folder recursed")
        << "ARJ" << false << "docs" << QStringList{"a", "-y", "-m3", "-r", "A", "F"};
  }
  void exclusionAndRecursion() {
    QFETCH(QString, method);
    QFETCH(bool, exclude);
    QFETCH(QString, item);
    QFETCH(QStringList, vector);
    const QString folder = folderWith({"f.txt", "docs/inside.txt"});
    FakeToolRunner runner;
    RecordingUi ui;
    OnDropRequest request = dropOf({folder + '/' + item}, method);
    request.excludeDsStore = exclude;
    CompressOnDrop(request, runner, ui).run();
    QCOMPARE(runner.runs.size(), 1);
    QCOMPARE(runner.runs[0].arguments,
             substituted(vector, item + '.' + method.toLower(), folder + '/' + item));
  }

  void archiveIsNamed_data() {
    QTest::addColumn<bool>("firstName");
    QTest::addColumn<QString>("archiveFile");
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("directory");
    QTest::newRow("after the first file") << true << "src/photo.jpg"
                                          << "ZIP"
                                          << "photo.jpg.zip"
                                          << "src";
    QTest::newRow("as saved") << false << "out/untitled"
                              << "7z"
                              << "untitled.7z"
                              << "out";
    QTest::newRow("saved name with a dot") << false << "out/holiday.pics"
                                           << "LHA"
                                           << "holiday.pics.lha"
                                           << "out";
    QTest::newRow("first file wins over the saved name") << true << "out/untitled"
                                                         << "ARJ"
                                                         << "photo.jpg.arj"
                                                         << "out";
  }
  void archiveIsNamed() {
    QFETCH(bool, firstName);
    QFETCH(QString, archiveFile);
    QFETCH(QString, method);
    QFETCH(QString, name);
    QFETCH(QString, directory);
    const QString root = folderWith({"src/photo.jpg", "src/b.txt", "out/keep"});
    FakeToolRunner runner;
    RecordingUi ui;
    OnDropRequest request = dropOf({root + "/src/photo.jpg", root + "/src/b.txt"}, method);
    request.archiveFile = root + '/' + archiveFile;
    request.firstNameIsArchiveName = firstName;
    CompressOnDrop job(request, runner, ui);
    job.run();
    QCOMPARE(job.archiveName(), name);
    QVERIFY(ui.calls.contains("name " + name));
    QCOMPARE(runner.runs.size(), 2);
    for (const FakeToolRunner::Recorded& run : runner.runs) {
      QVERIFY(run.arguments.contains(name));
      QCOMPARE(run.directoryAtLaunch, root + '/' + directory);
    }
    QVERIFY(ui.alerts.isEmpty());
  }

  // Only zip and 7z close the progress window; the others leave it up
  // until Quillet ends.
  void progressWindow_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<bool>("closed");
    QTest::newRow("ZIP") << "ZIP" << true;
    QTest::newRow("7z") << "7z" << true;
    QTest::newRow("RAR") << "RAR" << false;
    QTest::newRow("ARJ") << "ARJ" << false;
    QTest::newRow("LHA") << "LHA" << false;
  }
  void progressWindow() {
    QFETCH(QString, method);
    QFETCH(bool, closed);
    const QString folder = folderWith({"a", "b"});
    FakeToolRunner runner;
    RecordingUi ui;
    CompressOnDrop(dropOf({folder + "/a", folder + "/b"}, method), runner, ui).run();
    QStringList expected = {"show window",  "spin",       "name a." + method.toLower(),
                            "progress 0/2", "progress 1", "progress 2"};
    if (closed)
      expected << "stop spin"
               << "hide window";
    expected << "stop spin";
    QCOMPARE(ui.calls, expected);
  }

  void severalFilesInOneArchive_data() {
    QTest::addColumn<QString>("method");
    QTest::newRow("ZIP") << "ZIP";
    QTest::newRow("7z") << "7z";
    QTest::newRow("ARJ") << "ARJ";
    QTest::newRow("LHA") << "LHA";
  }
  void severalFilesInOneArchive() {
    QFETCH(QString, method);
    const QStringList names = {"first.txt", "second file.txt", "third"};
    const QString folder = folderWith(names);
    QStringList files;
    for (const QString& name : names)
      files << folder + '/' + name;
    ProcessToolRunner runner;
    RecordingUi ui;
    CompressOnDrop job(dropOf(files, method, "4"), runner, ui);
    job.run();

    const QString archive = folder + '/' + job.archiveName();
    QCOMPARE(job.archiveName(), "first.txt." + method.toLower());
    QCOMPARE(namesIn(archive), names);
    const TestArchives::Tree inside = unpacked(archive);
    for (const QString& name : names)
      QCOMPARE(inside.value(name), contentOf(folder + '/' + name));
    QVERIFY2(ui.failures.isEmpty(), qPrintable(ui.failures.join('\n')));
    QVERIFY(ui.alerts.isEmpty());
  }

  // Without RARLAB's rar the rar adapter says so; the job stops there.
  void missingRarIsNamedOnce() {
    if (QFileInfo::exists("/usr/bin/rar"))
      QSKIP("RARLAB's rar is installed");
    const QString folder = folderWith({"a.txt", "b.txt"});
    ProcessToolRunner runner;
    RecordingUi ui;
    CompressOnDrop(dropOf({folder + "/a.txt", folder + "/b.txt"}, "RAR"), runner, ui).run();
    QCOMPARE(ui.alerts.size(), 1);
    QVERIFY2(ui.alerts[0].startsWith("Missing program: "), qPrintable(ui.alerts[0]));
    QVERIFY(ui.failures.isEmpty());
    QCOMPARE(QDir(folder).entryList(QDir::Files), QStringList({"a.txt", "b.txt"}));
  }

  void failedRunIsReportedAndTheNextFileAdded() {
    const QString folder = folderWith({"a", "b"});
    ActingRunner runner;
    runner.whileRunning = [](int index, ToolResult result) {
      if (index == 0) {
        result.exitCode = 2;
        result.errors = "ERROR: a: cannot open file\n";
      }
      return result;
    };
    RecordingUi ui;
    CompressOnDrop(dropOf({folder + "/a", folder + "/b"}, "7z"), runner, ui).run();
    QCOMPARE(runner.runs.size(), 2);
    QCOMPARE(ui.failures,
             QStringList({"7za a failed with exit status 2: ERROR: a: cannot open file"}));
  }

  void unknownMethodMakesNothing() {
    const QString folder = folderWith({"a"});
    FakeToolRunner runner;
    RecordingUi ui;
    CompressOnDrop(dropOf({folder + "/a"}, "zip"), runner, ui).run();
    QVERIFY(runner.runs.isEmpty());
    QCOMPARE(ui.failures.size(), 1);
    QVERIFY(ui.alerts.isEmpty());
  }

  // The Cancel button ends the run in progress only; it is no failure to
  // report, and the next files are still added.
  void cancelGoesOnWithTheNextFile() {
    const QString folder = folderWith({"a", "b", "c"});
    ActingRunner runner;
    FakeDialogs dialogs;
    OnDropCompressingWindow window(dialogs);
    runner.whileRunning = [&](int index, ToolResult result) {
      if (index == 0) {
        window.findChild<QPushButton*>("btnCancelCompression")->click();
        result.crashed = true;
      }
      return result;
    };
    // arj's window stays up as the job left it.
    window.compress(dropOf({folder + "/a", folder + "/b", folder + "/c"}, "ARJ"), runner);
    QCOMPARE(runner.cancels, 1);
    QCOMPARE(runner.runs.size(), 3);
    QVERIFY(window.isVisible());
    QCOMPARE(window.compressingLoader()->value(), 3);
    QCOMPARE(window.compressingWindowStatus()->text(), QString("Compressing..."));
    QVERIFY(dialogs.alerts.isEmpty());
  }

  // A real 7-Zip stopped while it writes a new archive: nothing half
  // written stays, and the next file makes the archive.
  void cancelWithTheRealTool() {
    const QString folder = folderWith({"small.txt"});
    QByteArray noise(8 * 1024 * 1024, Qt::Uninitialized);
    for (qsizetype i = 0; i < noise.size(); ++i)
      noise[i] = static_cast<char>(std::rand());
    writeFile(folder + "/big.bin", noise);
    ProcessToolRunner runner;
    FakeDialogs dialogs;
    OnDropCompressingWindow window(dialogs);
    QTimer watch;
    watch.setInterval(10);
    connect(&watch, &QTimer::timeout, this, [&] {
      if (QFileInfo::exists(folder + "/big.bin.zip") && window.isVisible()) {
        watch.stop();
        window.findChild<QPushButton*>("btnCancelCompression")->click();
      }
    });
    watch.start();
    window.compress(dropOf({folder + "/big.bin", folder + "/small.txt"}, "ZIP", "4"), runner);

    QVERIFY(!window.isVisible());
    QCOMPARE(namesIn(folder + "/big.bin.zip"), QStringList({"small.txt"}));
    QCOMPARE(QDir(folder).entryList(QDir::Files),
             QStringList({"big.bin", "big.bin.zip", "small.txt"}));
    QVERIFY(dialogs.alerts.isEmpty());
  }

  // Names reach 7-Zip as the names they are; rar and arj, which would read
  // some of them as patterns or list files, refuse before anything runs.
  void hostileNames_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("refused");
    for (const char* name : {"*", "a*", "-rf", "@x", "?"})
      QTest::addRow("ZIP %s", name) << "ZIP" << name << false;
    QTest::newRow("7z @x") << "7z"
                           << "@x" << false;
    QTest::newRow("ARJ *") << "ARJ"
                           << "*" << true;
    QTest::newRow("ARJ a*") << "ARJ"
                            << "a*" << true;
    QTest::newRow("ARJ !x") << "ARJ"
                            << "!x" << false;
    QTest::newRow("ARJ -rf") << "ARJ"
                             << "-rf" << false;
    QTest::newRow("ARJ @x") << "ARJ"
                            << "@x" << false;
  }
  void hostileNames() {
    QFETCH(QString, method);
    QFETCH(QString, name);
    QFETCH(bool, refused);
    // Neighbours a wildcard or a list file would pull in.
    const QString folder = folderWith({name, "abc", "b", "x", "list.txt", "keep.txt"});
    writeFile(folder + "/list.txt", (folder + "/keep.txt\n").toUtf8());
    const QStringList before = QDir(folder).entryList(QDir::Files);
    ProcessToolRunner runner;
    RecordingUi ui;
    CompressOnDrop job(dropOf({folder + '/' + name}, method), runner, ui);
    job.run();

    if (refused) {
      QCOMPARE(ui.alerts.size(), 1);
      QVERIFY2(ui.alerts[0].startsWith("Name not supported: "), qPrintable(ui.alerts[0]));
      QCOMPARE(QDir(folder).entryList(QDir::Files), before);
      return;
    }
    QCOMPARE(job.archiveName(), name + '.' + method.toLower());
    QCOMPARE(namesIn(folder + '/' + job.archiveName()), QStringList({name}));
    QVERIFY2(ui.failures.isEmpty(), qPrintable(ui.failures.join('\n')));
  }

  void rarRefusesPatterns() {
    const QString folder = folderWith({"y", "a?"});
    FakeToolRunner runner;
    RecordingUi ui;
    CompressOnDrop(dropOf({folder + "/y", folder + "/a?"}, "RAR"), runner, ui).run();
    QVERIFY(runner.runs.isEmpty());
    QCOMPARE(ui.alerts.size(), 1);
    QVERIFY(ui.alerts[0].contains(folder + "/a?"));
  }

  void screenshot() {
    const QString shots = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (shots.isEmpty())
      QSKIP("no QUILLET_SCREENSHOT_DIR");
    const QString folder = folderWith({"holiday photo.jpg", "b", "c"});
    ActingRunner runner;
    FakeDialogs dialogs;
    OnDropCompressingWindow window(dialogs);
    bool saved = false;
    runner.whileRunning = [&](int index, ToolResult result) {
      if (index == 1 && QTest::qWaitForWindowExposed(&window)) {
        QDir().mkpath(shots);
        saved = window.grab().save(shots + "/compress-on-drop.png");
      }
      return result;
    };
    window.compress(dropOf({folder + "/holiday photo.jpg", folder + "/b", folder + "/c"}, "7z"),
                    runner);
    QVERIFY(saved);
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  CompressOnDropTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_compress_on_drop.moc"
