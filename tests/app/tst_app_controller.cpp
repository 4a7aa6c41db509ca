#include "FakeToolRunner.h"
#include "app/AboutClass.h"
#include "app/AppController.h"
#include "app/DefaultLevelDisplay.h"
#include "app/FileManagerEntries.h"
#include "create/ArchiveCreation.h"
#include "create/CreateArchiveWindow.h"
#include "create/JobSettings.h"
#include "platform/PreferencesStore.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QFile>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>

namespace {

using TestArchives::contentOf;
using TestArchives::writeFile;

struct Launched : EngineFixture<FakeToolRunner> {
  int terminations = 0;
  AppController controller{engine, {runner, dialogs, desktop, [this] { ++terminations; }}};

  Launched() {
    controller.awakeFromNib();
    controller.applicationDidFinishLaunching();
  }
};

void clearStore() {
  for (const char* key : {"openDestinationAfterExtraction", "overwriteOnExtraction",
                          "playSoundWhenDone", "trashAfterExtracting", "DefaultCompressionLevel"})
    PreferencesStore::setText(QString::fromLatin1(key), QString());
}

}  // namespace

// Start-up: the stored values in the controls, the file managers' entries,
// and the ways out.
class AppControllerTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { clearStore(); }

  void theDefaultLevelIsShownNotChosen_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<int>("popUp");
    QTest::addColumn<int>("slider");
    QTest::addColumn<QString>("label");
    QTest::newRow("Lowest") << "Lowest" << 0 << 1 << "Level: Lowest | Speed: Fastest";
    QTest::newRow("Low") << "Low" << 1 << 2 << "Level: Low | Speed: Fast";
    QTest::newRow("Normal") << "Normal" << 2 << 3 << "Level: Normal | Speed: Medium";
    QTest::newRow("High") << "High" << 3 << 4 << "Level: High | Speed: Slow";
    QTest::newRow("Ultra") << "Ultra" << 4 << 5 << "Level: Ultra | Speed: Slowest";
    QTest::newRow("absent") << QString() << 2 << 3 << "Level: Normal | Speed: Medium";
    QTest::newRow("Higher is no stored level")
        << "Higher" << 2 << 3 << "Level: Normal | Speed: Medium";
  }
  void theDefaultLevelIsShownNotChosen() {
    QFETCH(QString, stored);
    QFETCH(int, popUp);
    QFETCH(int, slider);
    QFETCH(QString, label);
    const DefaultLevelDisplay display = DefaultLevelDisplay::of(stored);
    QCOMPARE(display.popUpIndex, popUp);

    PreferencesStore::setText("DefaultCompressionLevel", stored);
    Launched app;
    CreateArchiveWindow* window = app.engine.creation()->createArchiveWindow();
    QCOMPARE(window->compressionLevelSliderControl()->value(), slider);
    QCOMPARE(window->compressionLevelInfo()->text(), label);
    // The switches stay those the create side started with: "Low" when the
    // stored level is not one of the five.
    const QString expected =
        stored.isEmpty() || stored == "Higher" ? "-mx3" : JobSettings::levelNamed(stored).sevenZip;
    QCOMPARE(JobSettings::shared().zipCompressionLevel, expected);
  }

  void theExtractionOptionsShowTheStore() {
    PreferencesStore::setYes("overwriteOnExtraction", true);
    PreferencesStore::setYes("playSoundWhenDone", false);
    PreferencesStore::setYes("trashAfterExtracting", true);
    Launched app;
    const MainWindowUi& ui = app.engine.ui();
    QVERIFY(ui.chkOverwriteExistingFiles->isChecked());
    QVERIFY(!ui.chkPlaySoundWhenDone->isChecked());
    QVERIFY(!ui.chkOpenDestinationAfterExtraction->isChecked());
    QVERIFY(ui.chkTrashAfterExtracting->isChecked());
    QCOMPARE(ui.fileContentView->lineWrapMode(), QPlainTextEdit::NoWrap);
  }

  void closingTheMainWindowQuits() {
    Launched app;
    QVERIFY(!app.engine.ui().mainWindow->close());
    QCOMPARE(app.terminations, 1);
  }

  void theAboutBoxNamesTheVersion() {
    Launched app;
    QCoreApplication::setApplicationVersion("1.2.3");
    app.controller.about()->menuAbout();
    QCOMPARE(app.controller.about()->versionLabel()->text(), QString("Version: 1.2.3"));
    QVERIFY(app.controller.about()->aboutWindow()->isVisible());
    app.controller.about()->btnCool();
    QVERIFY(!app.controller.about()->aboutWindow()->isVisible());
  }

  void webPagesOpenInTheBrowser() {
    Launched app;
    app.controller.btnWeb();
    app.controller.btnCheckForUpdates();
    app.controller.btnBlog();
    QCOMPARE(app.desktop.openedUrls.size(), 3);
    QCOMPARE(app.desktop.openedUrls[0], app.desktop.openedUrls[1]);
    QVERIFY(app.desktop.openedUrls[2] != app.desktop.openedUrls[0]);
  }

  // Only a missing compress entry installs; an existing one keeps both
  // entries as the user left them.
  void fileManagerEntriesAreInstalledOnce() {
    QTemporaryDir shipped;
    QTemporaryDir home;
    for (const char* path : {"kio/quillet-compress.desktop", "kio/quillet-extract.desktop",
                             "nautilus/Compress with Quillet", "nautilus/Extract with Quillet"})
      writeFile(shipped.filePath(path), "Exec=\"@QUILLET@\" %F\n");
    writeFile(home.filePath("nautilus/scripts/Compress with Quillet"), "mine\n");
    FileManagerEntries::installMissing(shipped.path(), home.path(), "/opt/q uillet/bin/quillet");
    QCOMPARE(contentOf(home.filePath("kio/servicemenus/quillet-compress.desktop")),
             QByteArray("Exec=\"/opt/q uillet/bin/quillet\" %F\n"));
    QVERIFY(QFile::exists(home.filePath("kio/servicemenus/quillet-extract.desktop")));
    QVERIFY(QFileInfo(home.filePath("kio/servicemenus/quillet-extract.desktop")).isExecutable());
    QCOMPARE(contentOf(home.filePath("nautilus/scripts/Compress with Quillet")),
             QByteArray("mine\n"));
    QVERIFY(!QFile::exists(home.filePath("nautilus/scripts/Extract with Quillet")));
  }
};

QTEST_MAIN(AppControllerTest)
#include "tst_app_controller.moc"
