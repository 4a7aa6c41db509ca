#include "create/JobSettings.h"
#include "engine/OwnTemporaryFolder.h"
#include "platform/PreferenceKeys.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"
#include "tools/ConverterWindow.h"
#include "tools/converter.h"

#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

namespace {

using TestArchives::Tree;
using TestArchives::treeUnder;
using TestArchives::writeFile;

struct Fixture : EngineFixture<ProcessToolRunner> {
  converter& conversion() { return *engine.archiveConverter(); }
  ConverterWindow& window() { return *conversion().mainWindow(); }
};

}  // namespace

// Conversions with the real tools: the result is extracted again and
// compared with the files that went into the original.
class ConverterTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  QTemporaryDir temp_;
  Tree source_;

  QString make(const QString& archive, const QString& program, const QStringList& arguments) {
    return TestArchives::makeArchive(work_.path(), archive, program, arguments);
  }

  Tree extracted(const QString& archive) {
    QTemporaryDir out;
    TestArchives::runIn(out.path(), "7z", {"x", "-y", archive});
    return treeUnder(out.path());
  }

 private slots:
  void initTestCase() {
    // Quillet's own temporary folder goes inside a folder the test watches.
    qputenv("TMPDIR", temp_.path().toUtf8());
    TestArchives::writeSampleTree(work_.path(), "tree");
    source_ = treeUnder(work_.filePath("tree"));
    PreferencesStore::setYes(PreferenceKeys::kListCompressedTarArchives, true);
  }

  void convertsIntoTheChosenFormat_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("result");
    QTest::newRow("zip to 7z") << "from zip.zip"
                               << "7z" << QStringList{"a", "-bd", "%A", "tree"} << "7z"
                               << "from zip.7z";
    QTest::newRow("7z to zip") << "from 7z.7z"
                               << "7z" << QStringList{"a", "-bd", "%A", "tree"} << "zip"
                               << "from 7z.zip";
    QTest::newRow("tar to zip") << "from tar.tar"
                                << "tar" << QStringList{"cf", "%A", "tree"} << "zip"
                                << "from tar.zip";
    QTest::newRow("tar.xz to zip, named without .tar")
        << "from txz.tar.xz"
        << "tar" << QStringList{"cJf", "%A", "tree"} << "zip"
        << "from txz.zip";
    QTest::newRow("arj to 7z") << "fromarj.arj"
                               << "arj" << QStringList{"a", "-r", "%A", "tree"} << "7z"
                               << "fromarj.7z";
    QTest::newRow("lha to zip") << "from lha.lha"
                                << "jlha"
                                << QStringList{"a", "%A", "tree/a.txt", "tree/dir one/b.bin"}
                                << "zip"
                                << "from lha.zip";
  }
  void convertsIntoTheChosenFormat() {
    QFETCH(QString, archive);
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(QString, target);
    QFETCH(QString, result);
    const QString path = make(archive, program, arguments);
    Fixture fx;
    fx.open(path);
    fx.engine.btnConvert();
    QVERIFY(fx.window().isVisible());
    // Nothing runs yet, so there is nothing to cancel.
    QVERIFY(fx.window().findChild<QPushButton*>("btnCancel")->isHidden());
    target == "7z" ? fx.conversion().drop7z() : fx.conversion().dropZip();
    fx.conversion().btnConvert();

    QVERIFY2(fx.dialogs.alerts.isEmpty(), qPrintable(fx.dialogs.alerts.value(0).message));
    Tree expected;
    for (auto [name, content] : source_.asKeyValueRange())
      expected.insert("tree/" + name, content);
    if (program == "jlha")
      expected = {{"tree/a.txt", source_["a.txt"]},
                  {"tree/dir one/b.bin", source_["dir one/b.bin"]}};
    QCOMPARE(extracted(work_.filePath(result)), expected);
    QVERIFY(TestArchives::runIn(work_.path(), "7z", {"l", work_.filePath(result)})
                .contains("Type = " + target.toUtf8()));
    QVERIFY(QFile::exists(path));
    QVERIFY(QDir(OwnTemporaryFolder::path()).isEmpty());
    QCOMPARE(fx.window().phaseLoadingIndicator()->value(), 0);
    QVERIFY(!fx.window().isBusy());
  }

  void wrongPasswordLeavesNoArchive_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("typed");
    QTest::newRow("zip, wrong") << "secret.zip" << QStringList{"-psecret"} << "wrong";
    QTest::newRow("zip, none") << "secret2.zip" << QStringList{"-psecret"} << "";
    QTest::newRow("7z headers, wrong")
        << "hidden.7z" << QStringList{"-psecret", "-mhe=on"} << "wrong";
  }
  void wrongPasswordLeavesNoArchive() {
    QFETCH(QString, archive);
    QFETCH(QStringList, arguments);
    QFETCH(QString, typed);
    const QString path =
        make(archive, "7z", QStringList{"a", "-bd"} + arguments + QStringList{"%A", "tree"});
    Fixture fx;
    fx.open(path, "secret");
    fx.engine.btnConvert();
    archive.endsWith(".zip") ? fx.conversion().drop7z() : fx.conversion().dropZip();
    fx.window().passwordTextField()->setText(typed);
    fx.conversion().btnConvert();
    QCOMPARE(fx.dialogs.alerts.size(), 1);
    QCOMPARE(fx.dialogs.alerts.first().title, QString("Wrong password"));
    const QString base = QFileInfo(path).completeBaseName();
    QVERIFY(!QFile::exists(work_.filePath(base + (archive.endsWith(".zip") ? ".7z" : ".zip"))));
    QVERIFY(QDir(OwnTemporaryFolder::path()).isEmpty());
  }

  void theRightPasswordProtectsTheResult() {
    const QString path = make("locked.7z", "7z", {"a", "-bd", "-psecret", "%A", "tree/a.txt"});
    Fixture fx;
    fx.open(path, "secret");
    fx.engine.btnConvert();
    fx.conversion().dropZip();
    QCOMPARE(fx.window().passwordTextField()->text(), QString("secret"));
    fx.conversion().btnConvert();
    QVERIFY(fx.dialogs.alerts.isEmpty());
    QTemporaryDir out;
    TestArchives::runIn(out.path(), "7z", {"x", "-psecret", work_.filePath("locked.zip")});
    QCOMPARE(TestArchives::contentOf(out.filePath("tree/a.txt")), QByteArray("hello\n"));
  }

  void cancelStopsTheToolAndLeavesNothing() {
    const QString path = make("slow.zip", "7z", {"a", "-bd", "%A", "tree/a.txt"});
    QTemporaryDir tools;
    writeFile(tools.filePath("7za"), "#!/bin/sh\nexec sleep 30\n");
    QFile(tools.filePath("7za")).setPermissions(QFile::ExeOwner | QFile::ReadOwner);
    Fixture fx;
    fx.open(path);
    fx.engine.btnConvert();
    fx.conversion().drop7z();
    const QByteArray realTools = qgetenv("QUILLET_TOOLS_DIR");
    qputenv("QUILLET_TOOLS_DIR", tools.path().toUtf8());
    QTimer::singleShot(300, fx.window().cancelButton(), &QPushButton::click);
    QElapsedTimer clock;
    clock.start();
    fx.conversion().btnConvert();
    qputenv("QUILLET_TOOLS_DIR", realTools);
    QVERIFY(clock.elapsed() < 20000);
    QCOMPARE(fx.window().statusLine()->text(), QString("Conversion cancelled."));
    QVERIFY(!QFile::exists(work_.filePath("slow.7z")));
    QVERIFY(QDir(OwnTemporaryFolder::path()).isEmpty());
    QVERIFY(!fx.window().isBusy());
  }

  void alertsAndTheSharedFormat() {
    Fixture fx;
    fx.engine.btnConvert();
    QCOMPARE(fx.dialogs.alerts.value(0).title, QString("No archive loaded."));
    QCOMPARE(fx.dialogs.alerts.value(0).message, QString("Please open an archive first."));
    QVERIFY(!fx.window().isVisible());

    fx.open(make("plain.zip", "7z", {"a", "-bd", "%A", "tree/a.txt"}));
    JobSettings::shared().compressionMethod = JobSettings::kTar;
    fx.engine.btnConvert();
    fx.conversion().btnConvert();
    QCOMPARE(fx.dialogs.alerts.value(1).title,
             QString("Please select archive type to convert to."));
    QCOMPARE(fx.dialogs.alerts.value(1).message,
             QString("Please select new archive type to convert the old one to."));
    QCOMPARE(fx.window().phaseLoadingIndicator()->value(), 2);

    // The converter's target is the create tab's next format too.
    fx.conversion().drop7z();
    QCOMPARE(JobSettings::shared().compressionMethod, JobSettings::kSevenZip);
    QVERIFY(!fx.window().iconConverted()->pixmap().isNull());
    fx.conversion().btnConvert();
    QVERIFY(QFile::exists(work_.filePath("plain.7z")));

    const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (!folder.isEmpty()) {
      QDir().mkpath(folder);
      fx.window().grab().save(folder + "/converter.png");
    }
  }
};

QTEST_MAIN(ConverterTest)
#include "tst_converter.moc"
