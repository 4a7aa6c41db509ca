#include "FakeToolRunner.h"
#include "app/Engine.h"
#include "create/JobSettings.h"
#include "engine/ArchiveEditing.h"
#include "engine/EntriesModel.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDir>
#include <QPlainTextEdit>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

namespace {

template <typename Runner>
struct Fixture : EngineFixture<Runner> {
  ArchiveEditing& editing() { return *this->engine.editing(); }
  void select(const QStringList& names) { this->selectRowsNamed(names); }
};

QStringList namesIn(const QString& archive) {
  QStringList names;
  for (const QByteArray& line :
       TestArchives::runIn("/", "7z", {"l", "-slt", archive}).split('\n')) {
    if (line.startsWith("Path = ") && !line.endsWith(archive.toUtf8()))
      names << QString::fromUtf8(line.mid(7));
  }
  names.sort();
  return names;
}

}  // namespace

// Deleting from and adding to real archives.
class ArchiveEditingTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;

  QString archiveOf(const QString& name) {
    const QString path = work_.filePath(name);
    QFile::remove(path);
    TestArchives::runIn(work_.path(), "7z",
                        {"a", "-bd", path, "tree/a.txt", "tree/big.dat", "tree/empty"});
    return path;
  }

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(work_.path(), "tree");
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO");
  }

  // The report follows the table's order, whatever order the rows were
  // clicked in.
  void deletingTwoEntries_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QStringList>("clicked");
    QTest::addColumn<QString>("deleted");
    // 7-Zip lists an empty file before the others.
    QTest::newRow("7z") << "d.7z" << QStringList{"tree/a.txt", "tree/empty"}
                        << "tree/empty\ntree/a.txt\n";
    QTest::newRow("zip") << "d.zip" << QStringList{"tree/a.txt", "tree/empty"}
                         << "tree/a.txt\ntree/empty\n";
    QTest::newRow("zip, clicked bottom up")
        << "e.zip" << QStringList{"tree/empty", "tree/a.txt"} << "tree/a.txt\ntree/empty\n";
  }
  void deletingTwoEntries() {
    QFETCH(QString, archive);
    QFETCH(QStringList, clicked);
    QFETCH(QString, deleted);
    const QString path = archiveOf(archive);
    Fixture<ProcessToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    fx.select(clicked);
    fx.editing().btnDeleteSelectedFilesFromArchive();
    QCOMPARE(namesIn(path), (QStringList{"tree/big.dat"}));
    QCOMPARE(fx.engine.ui().fileContentView->toPlainText(),
             "Items deleted:\n" + deleted + "\n -- Deletion completed, archive updated. --");
    QCOMPARE(fx.engine.ui().oppenedArchiveArrayController->rowCount(), 1);
  }

  void deletingEverythingIsRefused() {
    const QString path = archiveOf("all.7z");
    Fixture<FakeToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    const qsizetype runs = fx.runner.runs.size();
    fx.editing().btnDeleteSelectedFilesFromArchive();  // an empty table, nothing selected
    QCOMPARE(fx.dialogs.alerts.value(0).message,
             QString("You have to leave at least one file or directory in the archive."));
    QCOMPARE(fx.runner.runs.size(), runs);
  }

  void arjRefusesDeletionBeforeAnyRun() {
    const QString path = work_.filePath("r.arj");
    TestArchives::runIn(work_.path(), "arj", {"a", path, "tree/a.txt", "tree/big.dat"});
    Fixture<ProcessToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    fx.select({"a.txt"});
    fx.editing().btnDeleteSelectedFilesFromArchive();
    QCOMPARE(fx.dialogs.alerts.value(0).title, QString("ARJ Archive"));
    QCOMPARE(fx.dialogs.alerts.value(0).message,
             QString("Deleting files from ARJ archives is still not available"));
    QCOMPARE(fx.engine.ui().oppenedArchiveArrayController->rowCount(), 2);
  }

  void addingAFileAndAFolder_data() {
    QTest::addColumn<QString>("archive");
    QTest::newRow("7z") << "add.7z";
    QTest::newRow("zip") << "add.zip";
  }
  void addingAFileAndAFolder() {
    QFETCH(QString, archive);
    const QString path = archiveOf(archive);
    Fixture<ProcessToolRunner> fx;
    JobSettings::shared().splitVolumesSize = "-v10m";
    fx.engine.openDialog({path}, 1);
    fx.dialogs.openAnswers << QStringList{work_.filePath("tree/dir one"),
                                          work_.filePath("tree/big.dat")};
    fx.editing().addFilesToArchive();
    QVERIFY(namesIn(path).contains("dir one/sub/ünï cödé.txt"));
    QVERIFY(namesIn(path).contains("big.dat"));
    QCOMPARE(fx.dialogs.openPanels.last().title, QString("Select files to add"));
    QVERIFY(fx.dialogs.openPanels.last().chooseFolders);
    QCOMPARE(JobSettings::shared().splitVolumesSize, QString("-v"));
    QVERIFY(fx.engine.ui().oppenedArchiveArrayController->rowCount() > 3);
  }

  // Adding names the archive by its file name alone: it relies on the
  // folder that opening moved Quillet to.
  void addingRunsWhereOpeningLeftQuillet() {
    const QString path = archiveOf("here.7z");
    Fixture<FakeToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    fx.editing().updateArchive({"/home/x/doc.txt"}, 1);
    const auto& add = fx.runner.runs[fx.runner.runs.size() - 2];
    QCOMPARE(add.arguments, (QStringList{"a", "here.7z", "/home/x/doc.txt"}));
    QCOMPARE(QDir(add.directoryAtLaunch).canonicalPath(), QDir(work_.path()).canonicalPath());
  }

  void addCommandsPerType_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("rar stores no folder")
        << "pack.rar"
        << "r" << QStringList{"a", "pack.rar", "/Users/x/doc.txt", "-ep1"};
    QTest::newRow("arj") << "pack.arj"
                         << "arj" << QStringList{"a", "-y", "-r", "pack.arj", "/Users/x/doc.txt"};
    QTest::newRow("lha") << "pack.lha"
                         << "lha" << QStringList{"a", "pack.lha", "/Users/x/doc.txt"};
    QTest::newRow("gz goes to 7za") << "pack.gz"
                                    << "7za" << QStringList{"a", "pack.gz", "/Users/x/doc.txt"};
    QTest::newRow("a leading dash") << "-pack.zip"
                                    << "7za" << QStringList{"a", "./-pack.zip", "/Users/x/doc.txt"};
  }
  void addCommandsPerType() {
    QFETCH(QString, archive);
    QFETCH(QString, tool);
    QFETCH(QStringList, arguments);
    QTemporaryDir folder;
    const QString path = folder.filePath(archive);
    QFile(path).open(QIODevice::WriteOnly);
    Fixture<FakeToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    fx.runner.runs.clear();
    fx.editing().updateArchive({"/Users/x/doc.txt"}, 1);
    QCOMPARE(fx.runner.runs.value(0).tool(), tool);
    QCOMPARE(fx.runner.runs.value(0).arguments, arguments);
  }

  void gzipAndBzip2TokensAreRefused() {
    QTemporaryDir folder;
    const QString path = folder.filePath("x.bzip2");
    QFile(path).open(QIODevice::WriteOnly);
    Fixture<FakeToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    fx.editing().updateArchive({"/tmp/a"}, 1);
    QCOMPARE(fx.dialogs.alerts.value(0).title, QString("Archive not supported."));
    QVERIFY(fx.runner.runs.isEmpty());
  }

  void addingNeedsAnOpenArchive() {
    Fixture<FakeToolRunner> fx;
    fx.editing().addFilesToArchive();
    QCOMPARE(fx.dialogs.alerts.value(0).message, QString("Please open archive first!"));
    QVERIFY(fx.dialogs.openPanels.isEmpty());
  }

  void deletingANameWithALeadingDash() {
    const QString path = work_.filePath("dash.7z");
    QFile dash(work_.filePath("-dash.txt"));
    dash.open(QIODevice::WriteOnly);
    dash.write("d");
    dash.close();
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", path, "./-dash.txt", "tree/a.txt"});
    Fixture<ProcessToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    fx.select({"-dash.txt"});
    fx.editing().btnDeleteSelectedFilesFromArchive();
    QCOMPARE(namesIn(path), (QStringList{"tree/a.txt"}));
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  ArchiveEditingTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "tst_archive_editing.moc"
