#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "app/FilesFromOutside.h"
#include "platform/PreferencesStore.h"
#include "quick/PathLabel.h"
#include "quick/QuickExtractionWindow.h"
#include "quick/QuickPasswordDialog.h"
#include "quick/contextMenuClass.h"
#include "support/TestArchives.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QTemporaryDir>
#include <QTest>

namespace {

using Route = FilesFromOutside::Route;

struct Handed {
  FakeToolRunner runner;
  FakeDialogs dialogs;
  FakeDesktop desktop;
  QMainWindow mainWindow;
  QCheckBox excludeDsStore;
  int terminations = 0;
  FilesFromOutside files{
      {runner, dialogs, desktop, [this] { ++terminations; }}, mainWindow, excludeDsStore};
  QTemporaryDir folder;

  // Empty files are enough: the tools are fakes.
  QStringList made(const QStringList& names) const {
    QStringList paths;
    for (const QString& name : names) {
      paths << folder.filePath(name);
      TestArchives::writeFile(paths.last(), "");
    }
    return paths;
  }
  QStringList runsOf(const QString& tool, const QString& command) const {
    QStringList found;
    for (const FakeToolRunner::Recorded& run : runner.runs) {
      if (run.tool() == tool && run.arguments.value(0) == command)
        found << run.arguments.join(u' ');
    }
    return found;
  }
};

void setPreference(const char* key, const char* value) {
  PreferencesStore::setText(QString::fromLatin1(key), QString::fromLatin1(value));
}

}  // namespace

// The files a file manager hands over: which route a list takes, and how the
// extract route carries on around a password.
class FilesFromOutsideTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    for (const char* key : {"enableCustomContextMenu", "prefUseFisrstNameOfTheArrayAsArchiveName",
                            "CreateSurroundingFolderBeforeExtraction", "overwriteOnExtraction"})
      setPreference(key, "");
  }

  void theFirstFileDecidesTheRoute_data() {
    QTest::addColumn<QString>("extension");
    QTest::addColumn<bool>("customContextMenu");
    QTest::addColumn<Route>("route");
    QTest::newRow("zip") << "zip" << false << Route::Extract;
    QTest::newRow("zip, panel on") << "zip" << true << Route::QuickPanel;
    QTest::newRow("001, panel on") << "001" << true << Route::QuickPanel;
    QTest::newRow("tbz2 never goes to the panel") << "tbz2" << true << Route::Extract;
    QTest::newRow("txt") << "txt" << true << Route::Compress;
    QTest::newRow("extensions are case-sensitive") << "ZIP" << false << Route::Compress;
    QTest::newRow("no extension") << "" << false << Route::Compress;
  }
  void theFirstFileDecidesTheRoute() {
    QFETCH(QString, extension);
    QFETCH(bool, customContextMenu);
    QFETCH(Route, route);
    QCOMPARE(FilesFromOutside::routeOf(extension, customContextMenu), route);
  }

  void aListStartingWithAnArchiveIsExtractedFileByFile() {
    Handed handed;
    const QStringList files = handed.made({"a.zip", "b.txt"});
    handed.files.openFiles(files);
    QCOMPARE(handed.runsOf("7za", "x"),
             (QStringList{"x " + files.at(0) + " -ssc -aos -y", "x b.txt -ssc -aos -y"}));
    QVERIFY(handed.mainWindow.isHidden());
    QCOMPARE(handed.terminations, 1);
  }

  void aListStartingWithAnotherFileIsPackedOnce() {
    Handed handed;
    const QStringList files = handed.made({"b.txt", "a.zip"});
    handed.files.openFiles(files);
    QCOMPARE(handed.dialogs.savePanels.size(), 1);
    QCOMPARE(handed.dialogs.savePanels.first().fileName, QString("untitled"));
    QVERIFY(handed.dialogs.savePanels.first().startFolder.endsWith("Desktop"));
    // The panel was cancelled: nothing is packed, nothing extracted.
    QVERIFY(handed.runner.runs.isEmpty());
    QCOMPARE(handed.terminations, 1);
  }

  void thePanelTakesOnlyTheFirstArchive() {
    setPreference("enableCustomContextMenu", "YES");
    Handed handed;
    const QStringList files = handed.made({"a.zip", "b.zip"});
    handed.files.openFiles(files);
    QVERIFY(handed.files.contextMenu());
    QCOMPARE(handed.files.contextMenu()->hiddenFileName(), files.first());
    QVERIFY(handed.runner.runs.isEmpty());
    QCOMPARE(handed.terminations, 0);
  }

  // The dialog comes once, for the first protected archive; its OK acts on
  // the archive the window shows last.
  void twoProtectedArchivesAskOnce() {
    Handed handed;
    handed.runner.answer("7za", "l", "Path = x.txt\nEncrypted = +\n");
    const QStringList files = handed.made({"a.zip", "b.zip"});
    handed.files.openFiles(files);
    QuickPasswordDialog* dialog = handed.files.enterPasswordDlg();
    QVERIFY(dialog->isVisible());
    QCOMPARE(dialog->passwordProtectedDroppedFileNameLabel()->path(), QString("a.zip"));
    QVERIFY(handed.runsOf("7za", "x").isEmpty());
    QCOMPARE(handed.terminations, 0);

    dialog->passwordTextField()->setText("secret");
    emit dialog->okPressed();
    QCOMPARE(handed.runsOf("7za", "x"), QStringList{"x -psecret " + files.at(1) + " -ssc -aos -y"});
    QCOMPARE(handed.terminations, 1);
  }

  void cancellingThePasswordQuits() {
    Handed handed;
    handed.runner.answer("7za", "l", "Encrypted = +\n");
    handed.files.openFiles(handed.made({"a.7z"}));
    emit handed.files.enterPasswordDlg()->cancelPressed();
    QVERIFY(handed.runsOf("7za", "x").isEmpty());
    QCOMPARE(handed.terminations, 1);
  }
};

QTEST_MAIN(FilesFromOutsideTest)
#include "tst_files_from_outside.moc"
