#include "app/DropZone.h"
#include "app/Engine.h"
#include "engine/EntriesModel.h"
#include "engine/PasswordPanel.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "platform/QtDesktop.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QDockWidget>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

using Fixture = EngineFixture<ProcessToolRunner>;

class MainWindowTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  QString zip_;
  QString protected7z_;

  static void saveScreenshot(QWidget* window, const QString& name) {
    const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (folder.isEmpty())
      return;
    QDir().mkpath(folder);
    QTest::qWait(50);  // let pending layout requests settle
    window->grab().save(folder + u'/' + name);
  }

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(work_.path(), "tree");
    zip_ = work_.filePath("sample archive.zip");
    protected7z_ = work_.filePath("secret.7z");
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", zip_, "tree"});
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", "-pabc", "-mhe=on", protected7z_, "tree"});
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO");
  }

  void openingShowsTheArchive() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->show();
    ui.tabContainer->setCurrentIndex(2);
    fx.dialogs.openAnswers << QStringList{zip_};

    ui.openAction->trigger();

    QCOMPARE(ui.tabContainer->currentIndex(), 0);
    QCOMPARE(fx.dialogs.openPanels.size(), 1);
    QCOMPARE(fx.dialogs.openPanels[0].title, QString("Select archive to open"));
    QCOMPARE(fx.dialogs.openPanels[0].extensions.first(), QString("zip"));
    QVERIFY(!fx.dialogs.openPanels[0].chooseFolders);
    QCOMPARE(ui.mainWindow->windowTitle(), zip_);
    QCOMPARE(ui.filename->text(), QString("sample archive.zip"));
    QCOMPARE(ui.archivetype->text(), QString("zip"));
    QCOMPARE(ui.CRC32TextBox->text(),
             TestArchives::crcOfFile(zip_).remove(QRegularExpression("^0+")));
    QCOMPARE(ui.oppenedArchiveArrayController->rowCount(), 8);
    QCOMPARE(ui.fieldOpenedArchiveNumberOfFiles->text(), QString("8"));
    QVERIFY(!ui.archiveIconView->pixmap().isNull());
    QVERIFY(!ui.sourceArchive4ConvertionIcon->pixmap().isNull());
    QVERIFY(ui.loadingArchiveListingLoader->isHidden());
    QVERIFY(fx.dialogs.alerts.isEmpty());

    // Icons are asked for once per extension.
    QStringList asked = fx.desktop.iconRequests;
    asked.removeDuplicates();
    QCOMPARE(asked, fx.desktop.iconRequests);

    QCOMPARE(PreferencesStore::list(PreferencesStore::kRecentDocuments).value(0), zip_);
    QCOMPARE(ui.openRecentMenu->actions().value(0)->text(), QString("sample archive.zip"));

    ui.openedArchiveTableView->selectRow(3);
    saveScreenshot(ui.mainWindow, "main-window.png");
  }

  void typesThatListNothingKeepIconAndRows() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    fx.engine.openDialog({zip_}, 1);
    const qint64 zipIcon = ui.archiveIconView->pixmap().cacheKey();
    const QString gz = work_.filePath("x.tar.gz");
    TestArchives::runIn(work_.path(), "tar", {"czf", gz, "tree"});
    fx.engine.openDialog({gz}, 1);
    QCOMPARE(ui.archivetype->text(), QString("gz"));
    QCOMPARE(ui.archiveIconView->pixmap().cacheKey(), zipIcon);
    QCOMPARE(ui.oppenedArchiveArrayController->rowCount(), 8);
    QCOMPARE(ui.fieldOpenedArchiveNumberOfFiles->text(), QString("8"));
    QCOMPARE(ui.mainWindow->windowTitle(), gz);
  }

  void screenshotWithDesktopIcons() {
    ProcessToolRunner runner;
    FakeDialogs dialogs;
    QtDesktop desktop;
    Engine engine(runner, runner, dialogs, desktop);
    engine.ui().mainWindow->show();
    engine.openDialog({zip_}, 1);
    QVERIFY(!engine.ui().oppenedArchiveArrayController->entries().first().fileIcon.isNull());
    saveScreenshot(engine.ui().mainWindow, "main-window-desktop-icons.png");
  }

  void aCancelledPanelChangesNothing() {
    Fixture fx;
    fx.engine.btnOpenAction();
    QCOMPARE(fx.engine.ui().filename->text(), QString());
    QVERIFY(!fx.engine.archive().isOpen());
  }

  void thePasswordPanelListsWithThePassword() {
    Fixture fx;
    fx.engine.ui().mainWindow->show();
    fx.engine.openDialog({protected7z_}, 1);
    PasswordPanel* panel = fx.engine.enterPasswordDlg();
    QVERIFY(panel->isVisible());
    QCOMPARE(fx.engine.ui().oppenedArchiveArrayController->rowCount(), 0);
    saveScreenshot(panel, "password-panel.png");

    QTest::keyClicks(panel->passwordTextField(), "abc");
    panel->findChild<QPushButton*>("btnPasswordProtectedDlgOK")->click();
    QVERIFY(!panel->isVisible());
    QCOMPARE(fx.engine.archive().archivePass, QString("-pabc"));
    QCOMPARE(fx.engine.ui().oppenedArchiveArrayController->rowCount(), 8);
  }

  void closingThePasswordPanelKeepsTheRows() {
    Fixture fx;
    fx.engine.ui().mainWindow->show();
    fx.engine.openDialog({zip_}, 1);
    fx.engine.openDialog({protected7z_}, 1);
    fx.engine.enterPasswordDlg()->findChild<QPushButton*>("btnClosePasswordDlg")->click();
    QVERIFY(!fx.engine.enterPasswordDlg()->isVisible());
    QCOMPARE(fx.engine.ui().oppenedArchiveArrayController->rowCount(), 8);
    QCOMPARE(fx.engine.ui().filename->text(), QString("secret.7z"));
  }

  void sidePanelsFollowTheTabs() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->show();
    ui.btnExpandArchiveFilePreview->setChecked(true);
    QVERIFY(ui.drawerObject->isVisible());

    ui.tabContainer->setCurrentIndex(1);
    fx.engine.tabSwitchObserver();
    QVERIFY(ui.dropZone->isVisible());
    QVERIFY(!ui.drawerObject->isVisible());
    QVERIFY(!ui.btnExpandArchiveFilePreview->isChecked());
    saveScreenshot(ui.mainWindow, "create-tab.png");

    ui.btnExpandArchiveFilePreview->setChecked(true);
    ui.tabContainer->setCurrentIndex(0);
    fx.engine.tabSwitchObserver();
    QVERIFY(!ui.dropZone->isVisible());
    QVERIFY(ui.drawerObject->isVisible());

    ui.tabContainer->setCurrentIndex(3);
    fx.engine.tabSwitchObserver();
    QVERIFY(!ui.dropZone->isVisible());
    QVERIFY(!ui.drawerObject->isVisible());
    QVERIFY(!ui.btnExpandArchiveFilePreview->isChecked());
  }

  void aMissingProgramIsAnAlert() {
    QTemporaryDir emptyTools;
    qputenv("QUILLET_TOOLS_DIR", emptyTools.path().toUtf8());
    Fixture fx;
    fx.engine.openDialog({zip_}, 1);
    qputenv("QUILLET_TOOLS_DIR", qgetenv("QUILLET_TEST_TOOLS_DIR"));
    QCOMPARE(fx.dialogs.alerts.size(), 1);
    QCOMPARE(fx.dialogs.alerts[0].title, QString("Missing program"));
    QVERIFY(fx.dialogs.alerts[0].message.contains("7za"));
    QVERIFY(fx.engine.ui().loadingArchiveListingLoader->isHidden());
  }
};

int main(int argc, char** argv) {
  qputenv("QUILLET_TEST_TOOLS_DIR", qgetenv("QUILLET_TOOLS_DIR"));
  QApplication application(argc, argv);
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  MainWindowTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "tst_main_window.moc"
