#include "app/Engine.h"
#include "engine/EntriesModel.h"
#include "engine/Extraction.h"
#include "engine/ExtractionDialog.h"
#include "engine/MainWindowUi.h"
#include "engine/PasswordPanel.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <iterator>

namespace {

using TestArchives::contentOf;
using TestArchives::Tree;
using TestArchives::treeUnder;
using TestArchives::writeFile;

struct Fixture : EngineFixture<ProcessToolRunner> {
  Extraction& extraction() { return *engine.extraction(); }
};

struct Option {
  const char* key;
  QCheckBox* MainWindowUi::*box;
  void (Extraction::*action)();
};

constexpr Option kOptions[] = {
    {"openDestinationAfterExtraction", &MainWindowUi::chkOpenDestinationAfterExtraction,
     &Extraction::checkOpenDestinationAfterExtraction},
    {"trashAfterExtracting", &MainWindowUi::chkTrashAfterExtracting,
     &Extraction::checkTrashAfterExtracting},
    {"overwriteOnExtraction", &MainWindowUi::chkOverwriteExistingFiles,
     &Extraction::checkOverwriteOnExtraction},
    {"playSoundWhenDone", &MainWindowUi::chkPlaySoundWhenDone, &Extraction::checkPlaySoundWhenDone},
};

}  // namespace

// Extraction with the real tools into real folders.
class ExtractionTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  Tree source_;

  QString make(const QString& archive, const QString& program, const QStringList& arguments) {
    return TestArchives::makeArchive(work_.path(), archive, program, arguments);
  }

  Tree sourceUnder(const QString& prefix) const {
    Tree tree;
    for (auto [path, content] : source_.asKeyValueRange())
      tree.insert(prefix + path, content);
    return tree;
  }

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(work_.path(), "tree");
    source_ = treeUnder(work_.filePath("tree"));
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO");
  }

  void init() {
    for (const char* key :
         {"overwriteOnExtraction", "openDestinationAfterExtraction", "playSoundWhenDone"})
      PreferencesStore::setText(key, "NO");
  }

  void wholeArchivesArriveByteForByte_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("prefix");
    QTest::newRow("zip") << "t.zip"
                         << "7z" << QStringList{"a", "-bd", "%A", "tree"} << "tree/";
    QTest::newRow("7z") << "t.7z"
                        << "7z" << QStringList{"a", "-bd", "%A", "tree"} << "tree/";
    QTest::newRow("tar") << "t.tar"
                         << "tar" << QStringList{"cf", "%A", "tree"} << "tree/";
    QTest::newRow("tbz2 through tar") << "t.tbz2"
                                      << "tar" << QStringList{"cjf", "%A", "tree"} << "tree/";
    QTest::newRow("bz2 through tar") << "t.tar.bz2"
                                     << "tar" << QStringList{"cjf", "%A", "tree"} << "tree/";
    QTest::newRow("arj") << "t.arj"
                         << "arj" << QStringList{"a", "-r", "%A", "tree"} << "tree/";
    QTest::newRow("lha, in the destination")
        << "t.lha"
        << "jlha" << QStringList{"a", "%A", "tree/a.txt", "tree/dir one/b.bin"} << "tree/";
  }
  void wholeArchivesArriveByteForByte() {
    QFETCH(QString, archive);
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QFETCH(QString, prefix);
    const QString path = make(archive, program, arguments);
    QTemporaryDir destination;
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    Tree expected = sourceUnder(prefix);
    if (program == "jlha")
      expected = {{"tree/a.txt", source_["a.txt"]},
                  {"tree/dir one/b.bin", source_["dir one/b.bin"]}};
    QCOMPARE(treeUnder(destination.path()), expected);
    QVERIFY(!fx.extraction().extractionDialog()->isVisible());
    QVERIFY(fx.dialogs.alerts.isEmpty());
  }

  void compressedTarsGiveTheirInnerLayer_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("inner");
    QTest::newRow("tgz") << "t.tgz" << QStringList{"czf", "%A", "tree"} << "t.tar";
    QTest::newRow("gz") << "one.txt.gz" << QStringList{} << "one.txt";
  }
  void compressedTarsGiveTheirInnerLayer() {
    QFETCH(QString, archive);
    QFETCH(QStringList, arguments);
    QFETCH(QString, inner);
    const QString path = work_.filePath(archive);
    if (arguments.isEmpty()) {
      writeFile(work_.filePath("one.txt"), "one\n");
      TestArchives::runIn(work_.path(), "gzip", {"-k", "-f", "one.txt"});
    } else {
      make(archive, "tar", arguments);
    }
    QTemporaryDir destination;
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QVERIFY(QFile::exists(destination.filePath(inner)));
  }

  void overwriteChoosesBetweenSkippingAndReplacing_data() {
    QTest::addColumn<bool>("overwrite");
    QTest::addColumn<QByteArray>("kept");
    QTest::addColumn<QString>("text");
    QTest::newRow("skip")
        << false << QByteArray("mine\n")
        << "Extraction done.\n NOTE: existing files and folders skipped and not overwritten.\n";
    QTest::newRow("replace") << true << QByteArray("hello\n") << "Extraction done.\n";
  }
  void overwriteChoosesBetweenSkippingAndReplacing() {
    QFETCH(bool, overwrite);
    QFETCH(QByteArray, kept);
    QFETCH(QString, text);
    const QString path = make("o.7z", "7z", {"a", "-bd", "%A", "tree/a.txt"});
    QTemporaryDir destination;
    writeFile(destination.filePath("tree/a.txt"), "mine\n");
    PreferencesStore::setYes("overwriteOnExtraction", overwrite);
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(contentOf(destination.filePath("tree/a.txt")), kept);
    QCOMPARE(fx.engine.ui().fileContentView->toPlainText(), text);
  }

  void aWrongPasswordDestroysNothing_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("zip") << "w.zip" << QStringList{"a", "-bd", "-pright", "%A", "tree/a.txt"};
    QTest::newRow("7z, encrypted headers")
        << "w.7z" << QStringList{"a", "-bd", "-pright", "-mhe=on", "%A", "tree/a.txt"};
  }
  void aWrongPasswordDestroysNothing() {
    QFETCH(QString, archive);
    QFETCH(QStringList, arguments);
    const QString path = make(archive, "7z", arguments);
    QTemporaryDir destination;
    writeFile(destination.filePath("tree/a.txt"), "precious\n");
    PreferencesStore::setYes("overwriteOnExtraction", true);
    Fixture fx;
    fx.open(path, "wrong");
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(contentOf(destination.filePath("tree/a.txt")), QByteArray("precious\n"));
    QCOMPARE(fx.dialogs.alerts.size(), 1);
    QCOMPARE(fx.dialogs.alerts[0].title, QString("Wrong password"));

    fx.engine.enterPasswordDlg()->passwordTextField()->setText("right");
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(contentOf(destination.filePath("tree/a.txt")), QByteArray("hello\n"));
  }

  // RAR archives through the free tools, when RARLAB's unrar is missing.
  void rarArchivesExtractWithTheFreeTools_data() {
    QTest::addColumn<QString>("fixture");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("alert");
    QTest::addColumn<QString>("arrives");
    QTest::newRow("rar5, right password") << "rar5/encrypted-data.rar"
                                          << "password" << QString() << "stest1.txt";
    QTest::newRow("rar5, wrong password") << "rar5/encrypted-data.rar"
                                          << "nope"
                                          << "Wrong password" << QString();
    QTest::newRow("rar4 encryption") << "rar4/encrypted-data.rar"
                                     << "12345678"
                                     << "Nothing extracted" << QString();
    QTest::newRow("rar4 plain") << "rar4/folders.rar" << QString() << QString()
                                << "sub/dir1/file1.txt";
  }
  void rarArchivesExtractWithTheFreeTools() {
    QFETCH(QString, fixture);
    QFETCH(QString, password);
    QFETCH(QString, alert);
    QFETCH(QString, arrives);
    QTemporaryDir folder;
    const QString path = folder.filePath("archive.rar");
    QVERIFY(QFile::copy(TestArchives::fixturePath("rar/" + fixture), path));
    QTemporaryDir destination;
    writeFile(destination.filePath("stest1.txt"), "precious\n");
    PreferencesStore::setYes("overwriteOnExtraction", true);
    Fixture fx;
    fx.open(path, password.isEmpty() ? QString() : password);
    QVERIFY(fx.engine.ui().oppenedArchiveArrayController->rowCount() > 0);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(fx.dialogs.alerts.isEmpty() ? QString() : fx.dialogs.alerts.last().title, alert);
    if (arrives.isEmpty())
      QCOMPARE(treeUnder(destination.path()), (Tree{{"stest1.txt", "precious\n"}}));
    else
      QVERIFY(QFile::exists(destination.filePath(arrives)));
  }

  void theSurroundingFolderIsNamedAfterTheArchive() {
    const QString path = make("photos.tar.zip", "7z", {"a", "-bd", "%A", "tree/a.txt"});
    QTemporaryDir destination;
    Fixture fx;
    fx.open(path);
    fx.engine.ui().chkCreateSurroundingFolderBeforeExtracting->setChecked(true);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    QCOMPARE(fx.extraction().choosenPath(), destination.filePath("photos.tar"));
    QVERIFY(QFile::exists(destination.filePath("photos.tar/tree/a.txt")));
  }

  void showingAndSoundingFollowThePreferences() {
    const QString path = make("s.zip", "7z", {"a", "-bd", "%A", "tree/a.txt", "tree/big.dat"});
    PreferencesStore::setText("openDestinationAfterExtraction", "YES");
    PreferencesStore::setText("playSoundWhenDone", "YES");
    QTemporaryDir destination;
    Fixture fx;
    fx.open(path);
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    // The whole archive shows the archive's own folder, the selected rows
    // the chosen one.
    QCOMPARE(fx.desktop.shownFolders, QStringList{QFileInfo(path).absolutePath()});
    QCOMPARE(fx.desktop.beeps, 1);
    fx.selectRowsNamed({"tree/a.txt"});
    fx.dialogs.openAnswers << QStringList{destination.path()};
    fx.extraction().btnExtractSelected();
    QCOMPARE(fx.desktop.shownFolders.value(1), destination.path());
  }

  void selectedRowsArriveAlone_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("password");
    QTest::newRow("zip") << "sel.zip" << QString();
    QTest::newRow("7z") << "sel.7z" << QString();
    QTest::newRow("protected zip") << "psel.zip"
                                   << "pw";
    QTest::newRow("protected 7z") << "psel.7z"
                                  << "pw";
  }
  void selectedRowsArriveAlone() {
    QFETCH(QString, archive);
    QFETCH(QString, password);
    QStringList arguments = {"a", "-bd", "%A", "tree"};
    if (!password.isEmpty())
      arguments.insert(2, "-p" + password);
    const QString path = make(archive, "7z", arguments);
    QTemporaryDir destination;
    writeFile(destination.filePath("tree/a.txt"), "old\n");
    Fixture fx;
    fx.open(path, password.isEmpty() ? QString() : password);
    fx.selectRowsNamed({"tree/a.txt", "tree/dir one/b.bin"});
    fx.dialogs.openAnswers << QStringList{destination.path()};
    fx.extraction().btnExtractSelected();
    QCOMPARE(
        treeUnder(destination.path()),
        (Tree{{"tree/a.txt", source_["a.txt"]}, {"tree/dir one/b.bin", source_["dir one/b.bin"]}}));
    QCOMPARE(fx.dialogs.openPanels.last().title, QString("Select directory to extract to"));
  }

  void selectedRowsOfATarRunNothing() {
    const QString path = make("sel.tar", "tar", {"cf", "%A", "tree"});
    QTemporaryDir destination;
    Fixture fx;
    fx.open(path);
    fx.selectRowsNamed({"tree/a.txt"});
    fx.dialogs.openAnswers << QStringList{destination.path()};
    fx.extraction().btnExtractSelected();
    QVERIFY(QDir(destination.path()).isEmpty());
    QVERIFY(!fx.extraction().extractionDialog()->isVisible());
  }

  void screenshotOfTheExtractionDialog() {
    const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    const QString path = make("shot.7z", "7z", {"a", "-bd", "%A", "tree"});
    QTemporaryDir destination;
    // Takes the picture while the extraction runs.
    struct PictureRunner : ProcessToolRunner {
      QWidget* dialog = nullptr;
      QString file;
      ToolResult run(const ToolRun& run) override {
        if (dialog && run.arguments.value(0) == "x" && !file.isEmpty()) {
          QTest::qWait(50);
          dialog->grab().save(file);
        }
        return ProcessToolRunner::run(run);
      }
    } runner;
    FakeDialogs dialogs;
    FakeDesktop desktop;
    Engine engine(runner, runner, dialogs, desktop);
    engine.ui().mainWindow->show();
    engine.openDialog({path}, 1);
    runner.dialog = engine.extraction()->extractionDialog();
    if (!folder.isEmpty() && QDir().mkpath(folder))
      runner.file = folder + "/extraction-dialog.png";
    engine.extraction()->openDialogForExtraction({destination.path()}, 1);
    QVERIFY(QFile::exists(destination.filePath("tree/a.txt")));
  }

  void selectedRowsOfRarArjLhaAreRefusedAfterTheFolder_data() {
    QTest::addColumn<QString>("archive");
    QTest::newRow("rar") << "x.rar";
    QTest::newRow("arj") << "x.arj";
    QTest::newRow("lha") << "x.lha";
  }
  void selectedRowsOfRarArjLhaAreRefusedAfterTheFolder() {
    QFETCH(QString, archive);
    QTemporaryDir folder;
    const QString path = folder.filePath(archive);
    QFile(path).open(QIODevice::WriteOnly);
    Fixture fx;
    fx.open(path);
    fx.engine.ui().oppenedArchiveArrayController->setEntries({ArchiveEntry{"a.txt"}});
    fx.selectRowsNamed({"a.txt"});
    fx.dialogs.openAnswers << QStringList{folder.path()};
    fx.extraction().btnExtractSelected();
    QCOMPARE(fx.dialogs.openPanels.size(), 1);
    QCOMPARE(fx.dialogs.alerts.last().title, QString("Archive not supported"));
    QCOMPARE(fx.dialogs.alerts.last().message,
             QString("Extracting files from this type of archives is not supported."));
  }

  void cancelEndsTheRunningTool() {
    QTemporaryDir tools;
    QFile slow(tools.filePath("7za"));
    slow.open(QIODevice::WriteOnly);
    slow.write("#!/bin/sh\nexec sleep 30\n");
    slow.close();
    slow.setPermissions(slow.permissions() | QFile::ExeOwner);
    const QString path = make("c.7z", "7z", {"a", "-bd", "%A", "tree/a.txt"});
    Fixture fx;
    fx.open(path);
    const QByteArray realTools = qgetenv("QUILLET_TOOLS_DIR");
    qputenv("QUILLET_TOOLS_DIR", tools.path().toUtf8());
    QTimer::singleShot(300, [&fx] {
      fx.extraction().extractionDialog()->findChild<QPushButton*>("btnCancelExtraction")->click();
    });
    QElapsedTimer clock;
    clock.start();
    QTemporaryDir destination;
    fx.extraction().openDialogForExtraction({destination.path()}, 1);
    qputenv("QUILLET_TOOLS_DIR", realTools);
    QVERIFY(clock.elapsed() < 20000);
    QVERIFY(!fx.extraction().extractionDialog()->isVisible());
    QVERIFY(fx.engine.ui().fileContentView->toPlainText().startsWith("Extraction done."));
  }

  void nothingHappensWithoutAnArchive() {
    Fixture fx;
    fx.extraction().btnExtractAction();
    fx.extraction().btnOpenArchiveFolder();
    QVERIFY(fx.dialogs.openPanels.isEmpty());
    QVERIFY(fx.desktop.shownFolders.isEmpty());
  }

  void optionActionsStoreTheirCheckbox_data() {
    QTest::addColumn<int>("option");
    for (int option = 0; option < int(std::size(kOptions)); ++option)
      QTest::newRow(kOptions[option].key) << option;
  }

  void optionActionsStoreTheirCheckbox() {
    QFETCH(int, option);
    const Option& chosen = kOptions[option];
    Fixture fx;
    QCheckBox* box = fx.engine.ui().*chosen.box;
    PreferencesStore::remove(chosen.key);
    box->setChecked(true);
    (fx.extraction().*chosen.action)();
    QCOMPARE(PreferencesStore::text(chosen.key), QString("YES"));
    box->setChecked(false);
    (fx.extraction().*chosen.action)();
    QCOMPARE(PreferencesStore::text(chosen.key), QString("NO"));
    // A click on the box reaches the same action.
    box->click();
    QCOMPARE(PreferencesStore::text(chosen.key), QString("YES"));
    box->click();
    QCOMPARE(PreferencesStore::text(chosen.key), QString("NO"));
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  ExtractionTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "tst_extraction.moc"
