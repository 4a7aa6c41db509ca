#include "engine/ArchiveEditing.h"
#include "engine/ArchiveTest.h"
#include "engine/Extraction.h"
#include "engine/MainWindowUi.h"
#include "engine/OperationStatus.h"
#include "engine/SizeText.h"
#include "platform/PreferenceKeys.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QCheckBox>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace {

using TestArchives::Tree;
using TestArchives::treeUnder;

using Fixture = EngineFixture<ProcessToolRunner>;

}  // namespace

// tar archives compressed as a whole, listed, tested and extracted through
// GNU tar once the user has switched them on.
class CompressedTarTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  QStringList files_;
  Tree source_;

  QString make(const QString& archive, const QString& compression) {
    const QString path = work_.filePath(archive);
    TestArchives::runIn(work_.path(), "tar", {compression, "-cf", path, "tree"});
    return path;
  }

  static void listCompressedTars(bool on) {
    PreferencesStore::setYes(PreferenceKeys::kListCompressedTarArchives, on);
  }

  static void compressions() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("compression");
    QTest::newRow("gzip") << "t.tar.gz"
                          << "--gzip";
    QTest::newRow("bzip2") << "t.tar.bz2"
                           << "--bzip2";
    QTest::newRow("xz") << "t.tar.xz"
                        << "--xz";
    QTest::newRow("zstd") << "t.tar.zst"
                          << "--zstd";
  }

 private slots:
  void initTestCase() {
    QVERIFY(work_.isValid());
    files_ = TestArchives::writeSampleTree(work_.path(), "tree");
    source_ = treeUnder(work_.filePath("tree"));
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "YES");
  }

  void init() {
    listCompressedTars(true);
    PreferencesStore::setText("overwriteOnExtraction", "NO");
  }

  void listedTestedAndExtracted_data() { compressions(); }
  void listedTestedAndExtracted() {
    QFETCH(QString, archive);
    QFETCH(QString, compression);
    const QString path = make(archive, compression);
    Fixture fx;
    fx.open(path);
    const MainWindowUi& ui = fx.engine.ui();
    QCOMPARE(ui.archivetype->text(), archive.mid(2));
    QStringList all = files_ + QStringList{"tree", "tree/dir one", "tree/dir one/sub"};
    all.sort();
    const ArchiveEntries& rows = ui.oppenedArchiveArrayController->entries();
    QCOMPARE(TestArchives::sortedNamesOf(rows), all);
    for (const ArchiveEntry& row : rows) {
      if (files_.contains(row.name))
        QCOMPARE(row.originalSize,
                 SizeText::listing(static_cast<int>(QFileInfo(work_.filePath(row.name)).size())));
    }
    QVERIFY(!ui.operationStatus->failed());

    fx.engine.test()->btnTestAction();
    QCOMPARE(fx.dialogs.alerts.last().message, QString("No errors found."));

    // The surrounding folder is named without ".tar" as well.
    fx.engine.ui().chkCreateSurroundingFolderBeforeExtracting->setChecked(true);
    QTemporaryDir destination;
    fx.engine.extraction()->openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(treeUnder(destination.filePath("t/tree")), source_);
    QCOMPARE(fx.dialogs.alerts.size(), 1);
  }

  void aTruncatedArchiveIsDamaged_data() { compressions(); }
  void aTruncatedArchiveIsDamaged() {
    QFETCH(QString, archive);
    QFETCH(QString, compression);
    const QString path = make("cut-" + archive, compression);
    QFile file(path);
    QVERIFY(file.resize(file.size() / 2));
    Fixture fx;
    fx.open(path);
    fx.engine.test()->btnTestAction();
    QCOMPARE(fx.dialogs.alerts.last().message, QString("Archive is damaged."));
  }

  void overwritingFollowsTheSetting_data() {
    QTest::addColumn<bool>("overwrite");
    QTest::newRow("kept") << false;
    QTest::newRow("replaced") << true;
  }
  void overwritingFollowsTheSetting() {
    QFETCH(bool, overwrite);
    const QString path = make("o.tar.xz", "--xz");
    QTemporaryDir destination;
    Fixture fx;
    fx.open(path);
    fx.engine.extraction()->openDialogForExtraction({destination.path()}, 1);
    const QString edited = destination.filePath(files_.first());
    TestArchives::writeFile(edited, "edited");
    PreferencesStore::setYes("overwriteOnExtraction", overwrite);
    fx.engine.extraction()->openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(TestArchives::contentOf(edited) == "edited", !overwrite);
  }

  void extractingSelectedEntriesIsRefused() {
    Fixture fx;
    fx.open(make("r.tar.gz", "--gzip"));
    fx.selectRowsNamed({files_.first()});
    fx.dialogs.openAnswers << QStringList{work_.path()};
    fx.engine.extraction()->btnExtractSelected();
    QCOMPARE(fx.dialogs.alerts.last().message,
             QString("Extracting files from this type of archives is not supported."));
  }

  // These archives cannot be changed in place: the archive stays as it was.
  void updatingIsRefused_data() {
    QTest::addColumn<bool>("adding");
    QTest::newRow("delete") << false;
    QTest::newRow("add") << true;
  }
  void updatingIsRefused() {
    QFETCH(bool, adding);
    Fixture fx;
    const QString archive = make("u.tar.xz", "--xz");
    const QByteArray before = TestArchives::contentOf(archive);
    fx.open(archive);
    fx.selectRowsNamed({files_.first()});
    if (adding)
      fx.engine.editing()->updateArchive({work_.filePath("tree")}, 1);
    else
      fx.engine.editing()->btnDeleteSelectedFilesFromArchive();
    QCOMPARE(fx.dialogs.alerts.last().message,
             QString("This archive type is not supported for updating."));
    QCOMPARE(TestArchives::contentOf(archive), before);
  }

  void switchedOffTheExtensionRules_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("compression");
    QTest::addColumn<QString>("type");
    QTest::newRow("gzip") << "off.tar.gz"
                          << "--gzip"
                          << "gz";
    QTest::newRow("xz") << "off.tar.xz"
                        << "--xz"
                        << "xz";
  }
  void switchedOffTheExtensionRules() {
    QFETCH(QString, archive);
    QFETCH(QString, compression);
    QFETCH(QString, type);
    listCompressedTars(false);
    Fixture fx;
    fx.open(make(archive, compression));
    QCOMPARE(fx.engine.ui().archivetype->text(), type);
    QCOMPARE(fx.engine.ui().oppenedArchiveArrayController->rowCount(), 0);
    QVERIFY(fx.engine.ui().operationStatus->failed());
  }
};

QTEST_MAIN(CompressedTarTest)
#include "tst_compressed_tar.moc"
