#include "FakeToolRunner.h"
#include "app/Engine.h"
#include "engine/ArchiveTest.h"
#include "engine/PasswordPanel.h"
#include "engine/TestReport.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDir>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QTemporaryDir>
#include <QTest>

namespace {

template <typename Runner>
struct Fixture : EngineFixture<Runner> {
  QString verdict() const {
    return this->dialogs.alerts.isEmpty() ? QString() : this->dialogs.alerts.last().title;
  }
  QString report() const { return this->engine.ui().fileContentView->toPlainText(); }
};

void damage(const QString& path) {
  QFile file(path);
  file.open(QIODevice::ReadWrite);
  const qint64 middle = file.size() / 2;
  file.seek(middle);
  QByteArray bytes = file.read(64);
  for (char& byte : bytes)
    byte = static_cast<char>(~byte);
  file.seek(middle);
  file.write(bytes);
}

}  // namespace

// The Test button on real archives, sound and damaged.
class ArchiveTestTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(work_.path(), "tree");
    QFile noise(work_.filePath("tree/noise.bin"));
    noise.open(QIODevice::WriteOnly);
    for (int i = 0; i < 4000; ++i)
      noise.write(QByteArray::number(i * 2654435761u, 16));
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO");
  }

  void verdictsOnRealArchives_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("7z") << "t.7z"
                        << "7z" << QStringList{"a", "-bd", "%A", "tree"};
    QTest::newRow("zip") << "t.zip"
                         << "7z" << QStringList{"a", "-bd", "%A", "tree"};
    QTest::newRow("arj") << "t.arj"
                         << "arj" << QStringList{"a", "-r", "%A", "tree"};
    QTest::newRow("lha") << "t.lha"
                         << "jlha" << QStringList{"a", "%A", "tree/a.txt", "tree/noise.bin"};
  }
  void verdictsOnRealArchives() {
    QFETCH(QString, archive);
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    const QString path = TestArchives::makeArchive(work_.path(), archive, program, arguments);

    Fixture<ProcessToolRunner> sound;
    sound.engine.openDialog({path}, 1);
    sound.engine.test()->btnTestAction();
    QCOMPARE(sound.verdict(), QString("Archive test completed"));
    QCOMPARE(sound.dialogs.alerts.last().message, QString("No errors found."));
    QVERIFY(sound.report().contains("Everything is Ok"));
    QVERIFY2(!sound.report().contains("7-Zip [64]"), qPrintable(sound.report()));
    const QString shots = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (archive == "t.7z" && !shots.isEmpty() && QDir().mkpath(shots)) {
      sound.engine.ui().mainWindow->show();
      QTest::qWait(50);
      sound.engine.ui().mainWindow->grab().save(shots + "/main-window-after-test.png");
    }

    damage(path);
    Fixture<ProcessToolRunner> damaged;
    damaged.engine.openDialog({path}, 1);
    damaged.engine.test()->btnTestAction();
    QCOMPARE(damaged.verdict(), QString("Problem found"));
    QCOMPARE(damaged.dialogs.alerts.last().message, QString("Archive is damaged."));
  }

  void thePasswordGoesInBraces() {
    const QString path = work_.filePath("p.7z");
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", "-pabc", path, "tree/a.txt"});
    Fixture<ProcessToolRunner> fx;
    fx.engine.openDialog({path}, 1);
    fx.engine.enterPasswordDlg()->passwordTextField()->setText("abc");
    fx.engine.btnPasswordProtectedDlgOK();
    fx.engine.test()->btnTestAction();
    QCOMPARE(fx.engine.archive().archivePass, QString("-p{abc}"));
    QCOMPARE(fx.verdict(), QString("Problem found"));

    const QString braced = work_.filePath("braced.7z");
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", "-p{abc}", braced, "tree/a.txt"});
    Fixture<ProcessToolRunner> matching;
    matching.engine.openDialog({braced}, 1);
    matching.engine.enterPasswordDlg()->passwordTextField()->setText("abc");
    matching.engine.test()->btnTestAction();
    QCOMPARE(matching.verdict(), QString("Archive test completed"));
  }

  void rarVerdictsAreCaseSensitive_data() {
    QTest::addColumn<QByteArray>("report");
    QTest::addColumn<QString>("verdict");
    QTest::newRow("all ok") << TestArchives::fixture("tool-output/unrar-4.00b3-t-all-ok.txt")
                            << "Archive test completed";
    QTest::newRow("other case") << QByteArray("\nTesting x.rar\nall ok\n") << "Problem found";
    QTest::newRow("no output") << QByteArray() << "Problem found";
  }
  void rarVerdictsAreCaseSensitive() {
    QFETCH(QByteArray, report);
    QFETCH(QString, verdict);
    QTemporaryDir folder;
    const QString path = folder.filePath("x.rar");
    QFile(path).open(QIODevice::WriteOnly);
    Fixture<FakeToolRunner> fx;
    fx.runner.answer("unrar", "t", report);
    fx.engine.openDialog({path}, 1);
    fx.engine.test()->btnTestAction();
    QCOMPARE(fx.verdict(), verdict);
    QVERIFY(std::any_of(fx.runner.runs.cbegin(), fx.runner.runs.cend(), [&](const auto& run) {
      return run.tool() == "unrar" && run.arguments == QStringList{"t", path};
    }));
  }

  void noArchiveNoTest() {
    Fixture<FakeToolRunner> fx;
    fx.engine.test()->btnTestAction();
    QVERIFY(fx.runner.runs.isEmpty());
    QVERIFY(fx.dialogs.alerts.isEmpty());
  }

  void bannersAreRemovedPerVersion_data() {
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("report");
    QTest::newRow("7za 9.04") << TestReport::kSevenZip904Banner +
                                     "Processing archive: a.7z\n\nEverything is Ok\n"
                              << "Processing archive: a.7z\n\nEverything is Ok\n";
    QTest::newRow("unrar 3.90") << "\n" + TestReport::kUnrar390Banner +
                                       "\nTesting archive x.rar\nAll OK\n"
                                << "\n\nTesting archive x.rar\nAll OK\n";
    QTest::newRow("another version stays")
        << QString("\n7-Zip 9.20  Copyright\n\nEverything is Ok\n")
        << "\n7-Zip 9.20  Copyright\n\nEverything is Ok\n";
  }
  void bannersAreRemovedPerVersion() {
    QFETCH(QString, output);
    QFETCH(QString, report);
    QCOMPARE(TestReport::withoutBanners(
                 output, {TestReport::kSevenZip904Banner, TestReport::kUnrar390Banner}),
             report);
  }

  void theInstalledBannerIsLearned() {
    ProcessToolRunner runner;
    const QString banner = TestReport::installedBanner(runner, "/usr/bin/7z", false);
    QVERIFY(banner.startsWith("\n7-Zip"));
    QVERIFY(banner.endsWith("\n\n"));
    QCOMPARE(banner.count('\n'), 4);
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  ArchiveTestTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "tst_archive_test.moc"
