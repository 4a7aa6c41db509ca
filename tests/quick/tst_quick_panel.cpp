#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "platform/PreferencesStore.h"
#include "quick/PanelGeometry.h"
#include "quick/PathLabel.h"
#include "quick/QuickExtractionWindow.h"
#include "quick/QuickPasswordDialog.h"
#include "quick/contextMenuClass.h"
#include "quick/contextMenuWindowClass.h"
#include "support/Screenshot.h"
#include "support/TestArchives.h"

#include <QCursor>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QProgressBar>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Grabs the extraction window while the tool runs.
class GrabbingRunner : public FakeToolRunner {
 public:
  ToolResult run(const ToolRun& run) override {
    if (window && run.arguments.value(0) == u"x")
      saveScreenshot(window, QStringLiteral("quick-extraction-running"));
    return FakeToolRunner::run(run);
  }
  QWidget* window = nullptr;
};

struct Panel {
  Panel() { runner.window = controller.extractWindow(); }

  QStringList commands() const {
    QStringList ran;
    for (const FakeToolRunner::Recorded& run : runner.runs)
      ran << run.arguments.value(0);
    return ran;
  }
  bool spinning() const { return window()->progressIndicator()->maximum() == 0; }
  QuickExtractionWindow* window() const { return controller.extractWindow(); }
  QuickPasswordDialog* passwordDialog() const { return controller.enterPasswordDlg(); }

  GrabbingRunner runner;
  FakeDialogs dialogs;
  FakeDesktop desktop;
  int terminations = 0;
  contextMenuClass controller{{runner, dialogs, desktop, [this] { ++terminations; }}};
};

void sendMouse(QWidget* widget, QEvent::Type type, const QPointF& at, Qt::MouseButtons buttons) {
  QMouseEvent event(type, at, widget->mapToGlobal(at), Qt::LeftButton, buttons, Qt::NoModifier);
  QApplication::sendEvent(widget, &event);
}

}  // namespace

class QuickPanelTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    for (const char* key : {"openDestinationAfterExtraction", "overwriteOnExtraction",
                            "playSoundWhenDone", "autoremoveMACOSXfolder"})
      PreferencesStore::remove(QString::fromLatin1(key));
  }

  // Centred on the pointer, 13 to the right and 10 up, wherever that is.
  void placementAroundThePointer_data() {
    QTest::addColumn<QPoint>("pointer");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QPoint>("origin");
    QTest::newRow("middle") << QPoint(500, 400) << QSize(240, 100) << QPoint(393, 340);
    QTest::newRow("top left corner, not clamped")
        << QPoint(0, 0) << QSize(200, 80) << QPoint(-87, -50);
  }
  void placementAroundThePointer() {
    QFETCH(QPoint, pointer);
    QFETCH(QSize, size);
    QFETCH(QPoint, origin);
    QCOMPARE(PanelGeometry::placedAround(pointer, size), origin);
  }

  // Only the top edge is held below the top of the available area.
  void draggingClampsTheTopEdgeOnly_data() {
    QTest::addColumn<QPoint>("origin");
    QTest::addColumn<QPointF>("pressedAt");
    QTest::addColumn<QPointF>("pointerAt");
    QTest::addColumn<QPoint>("moved");
    QTest::newRow("within") << QPoint(100, 200) << QPointF(20, 10) << QPointF(50, 40)
                            << QPoint(130, 230);
    QTest::newRow("past the top") << QPoint(100, 40) << QPointF(20, 10) << QPointF(20, -30)
                                  << QPoint(100, 32);
    QTest::newRow("past the left edge")
        << QPoint(10, 200) << QPointF(20, 10) << QPointF(-100, 10) << QPoint(-110, 200);
    QTest::newRow("past the bottom")
        << QPoint(100, 1000) << QPointF(20, 10) << QPointF(20, 200) << QPoint(100, 1190);
  }
  void draggingClampsTheTopEdgeOnly() {
    QFETCH(QPoint, origin);
    QFETCH(QPointF, pressedAt);
    QFETCH(QPointF, pointerAt);
    QFETCH(QPoint, moved);
    const QRect available(0, 32, 1920, 1048);
    QCOMPARE(PanelGeometry::dragged(origin, pressedAt, pointerAt, available), moved);
  }

  void thePanelFollowsTheMouse() {
    contextMenuWindowClass panel;
    panel.show();
    panel.move(300, 300);
    sendMouse(&panel, QEvent::MouseButtonPress, QPointF(20, 20), Qt::LeftButton);
    QCOMPARE(panel.initialLocation(), QPointF(20, 20));
    sendMouse(&panel, QEvent::MouseMove, QPointF(50, 60), Qt::LeftButton);
    QCOMPARE(panel.pos(), QPoint(330, 340));
    sendMouse(&panel, QEvent::MouseMove, QPointF(90, 90), Qt::NoButton);
    QCOMPARE(panel.pos(), QPoint(330, 340));
  }

  // It comes up invisible around the pointer and fades in when the launch
  // hands it an archive.
  void thePanelFadesInAroundThePointer() {
    Panel fx;
    contextMenuWindowClass* panel = fx.controller.contextWindow();
    fx.controller.awakeFromNib();
    QCOMPARE(panel->windowOpacity(), 0.0);
    QCOMPARE(panel->pos(), PanelGeometry::placedAround(QCursor::pos(), panel->size()));
    fx.controller.setHiddenFileName("/srv/in box/holiday photos 2024.zip");
    fx.controller.fadeInPanel();
    QVERIFY(panel->isVisible());
    QTRY_VERIFY(qAbs(panel->windowOpacity() - contextMenuWindowClass::kOpacity) < 0.01);
    saveScreenshot(panel, "quick-panel");
  }

  void everyCancelQuits() {
    Panel fx;
    fx.controller.fadeInPanel();
    QTest::mouseClick(fx.controller.contextWindow()->cancelButton(), Qt::LeftButton);
    QCOMPARE(fx.terminations, 1);
    fx.passwordDialog()->presentFor("locked.zip");
    QTest::mouseClick(fx.passwordDialog()->findChild<QPushButton*>("btnPasswordDlgCancel"),
                      Qt::LeftButton);
    QCOMPARE(fx.terminations, 2);
    QTest::keyClick(fx.passwordDialog(), Qt::Key_Escape);
    QCOMPARE(fx.terminations, 3);
    QVERIFY(fx.runner.runs.isEmpty());
  }

  void extractingFillsTheWindowAndQuits() {
    QTemporaryDir top;
    const QString folder = top.filePath("Holiday pictures/summer_of-2024 with the whole family");
    const QString archive = folder + "/photos.zip";
    TestArchives::writeFile(archive, QByteArray(1048576, 'z'));
    PreferencesStore::setYes("openDestinationAfterExtraction", true);
    Panel fx;
    fx.controller.setHiddenFileName(archive);
    fx.controller.fadeInPanel();
    QTest::mouseClick(fx.controller.contextWindow()->extractButton(), Qt::LeftButton);
    QVERIFY(!fx.controller.contextWindow()->isVisible());
    QCOMPARE(fx.commands(), (QStringList{"l", "x"}));
    QCOMPARE(fx.runner.runs.last().arguments,
             (QStringList{"x", "photos.zip", "-ssc", "-aos", "-y"}));
    QCOMPARE(fx.runner.runs.last().directoryAtLaunch, folder);
    QuickExtractionWindow* window = fx.window();
    QVERIFY(window->isVisible());
    QCOMPARE(window->filename()->path(), QString("photos.zip"));
    QCOMPARE(window->destinationPath()->path(), folder + "/photos");
    QCOMPARE(window->filesize()->text(), QString("1.00 MB"));
    QCOMPARE(window->extractionStatus()->text(), QString("DONE"));
    QVERIFY(!fx.spinning());
    QCOMPARE(fx.desktop.shownFolders, QStringList{folder});
    QCOMPARE(fx.terminations, 1);
    saveScreenshot(window, "quick-extraction-done");
  }

  // The window says "DONE" all the same, with a line saying what failed.
  void aFailedRunIsShown() {
    QTemporaryDir folder;
    const QString archive = folder.filePath("damaged.rar");
    TestArchives::writeFile(archive, "Rar!");
    Panel fx;
    ToolResult failed;
    failed.exitCode = 3;
    failed.errors = "damaged.rar: the archive is damaged; nothing could be extracted\n";
    fx.runner.answer(
        "unrar", [](const QStringList& arguments) { return arguments.value(0) == u"x"; }, failed);
    fx.controller.setHiddenFileName(archive);
    fx.controller.btnDecompress();
    QCOMPARE(fx.window()->extractionStatus()->text(), QString("DONE"));
    const auto* line = fx.window()->findChild<QLabel*>("extractionFailures");
    QVERIFY(line->isVisibleTo(fx.window()));
    QVERIFY(line->text().contains("the archive is damaged"));
    QCOMPARE(fx.terminations, 1);
    saveScreenshot(fx.window(), "quick-extraction-failed");
  }

  // Only the exact lower-case extensions are extracted; anything else
  // leaves the empty window up and Quillet running.
  void anUnknownExtensionStops() {
    Panel fx;
    fx.controller.setHiddenFileName("/srv/in box/PHOTOS.ZIP");
    fx.controller.btnDecompress();
    QVERIFY(fx.runner.runs.isEmpty());
    QVERIFY(fx.window()->isVisible());
    QVERIFY(fx.window()->filename()->path().isEmpty());
    QCOMPARE(fx.terminations, 0);
  }

  // The password route extracts by full path and never shows the folder.
  void anEncryptedArchiveAsksForItsPassword() {
    QTemporaryDir folder;
    const QString archive = folder.filePath("locked.zip");
    TestArchives::writeFile(archive, "zip");
    PreferencesStore::setYes("openDestinationAfterExtraction", true);
    Panel fx;
    fx.runner.answer("7za", "l", "Path = a.txt\nEncrypted = +\n");
    fx.controller.setHiddenFileName(archive);
    fx.controller.btnDecompress();
    QCOMPARE(fx.commands(), QStringList{"l"});
    QVERIFY(fx.passwordDialog()->isVisible());
    QVERIFY(!fx.window()->isVisible());
    QVERIFY(fx.spinning());
    QCOMPARE(fx.terminations, 0);
    fx.passwordDialog()->passwordTextField()->setText("pa ss");
    saveScreenshot(fx.passwordDialog(), "quick-password");

    QTest::mouseClick(fx.passwordDialog()->findChild<QPushButton*>("btnPasswordDlgOK"),
                      Qt::LeftButton);
    QVERIFY(!fx.passwordDialog()->isVisible());
    QCOMPARE(fx.runner.runs.last().arguments,
             (QStringList{"x", "-ppa ss", archive, "-ssc", "-aos", "-y"}));
    QCOMPARE(fx.window()->extractionStatus()->text(), QString("DONE"));
    QVERIFY(fx.desktop.shownFolders.isEmpty());
    QCOMPARE(fx.terminations, 1);
  }

  // A gz has no type icon: the window keeps the one it had.
  void theTypeIcon_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("changes");
    QTest::newRow("zip") << "a.zip" << true;
    QTest::newRow("001") << "a.7z.001" << true;
    QTest::newRow("gz") << "a.gz" << false;
  }
  void theTypeIcon() {
    QFETCH(QString, name);
    QFETCH(bool, changes);
    QuickExtractionWindow window;
    const qint64 before = window.archiveTypeIcon()->pixmap().cacheKey();
    window.showArchive("/srv/" + name);
    QCOMPARE(window.archiveTypeIcon()->pixmap().cacheKey() != before, changes);
  }
};

QTEST_MAIN(QuickPanelTest)
#include "tst_quick_panel.moc"
