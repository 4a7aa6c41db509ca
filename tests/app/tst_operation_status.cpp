#include "app/Engine.h"
#include "engine/ArchiveEditing.h"
#include "engine/ArchiveTest.h"
#include "engine/Extraction.h"
#include "engine/ExtractionDialog.h"
#include "engine/LongRun.h"
#include "engine/OperationStatus.h"
#include "platform/ProcessToolRunner.h"
#include "platform/QtDialogs.h"
#include "support/EngineFixture.h"
#include "support/Screenshot.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QMainWindow>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using Fixture = EngineFixture<ProcessToolRunner>;

namespace {}  // namespace

class OperationStatusTest : public QObject {
  Q_OBJECT

  QTemporaryDir work_;
  QString good_;
  QString damaged_;

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(work_.path(), "tree");
    good_ = work_.filePath("good.7z");
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", good_, "tree"});
    TestArchives::writeFile(work_.filePath("big/data.bin"), QByteArray(200000, 'q'));
    damaged_ = work_.filePath("damaged.7z");
    TestArchives::runIn(work_.filePath("big"), "7z", {"a", "-bd", "-mx0", damaged_, "data.bin"});
    QFile file(damaged_);
    QVERIFY(file.open(QIODevice::ReadWrite));
    file.seek(1000);
    file.write("broken");
  }

  void extractionSaysHowManyAndWhere() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    fx.open(good_);
    QTemporaryDir target;
    fx.dialogs.openAnswers << QStringList{target.path()};
    fx.engine.extraction()->btnExtractAction();
    // The panel opens where the archive lies.
    QCOMPARE(fx.dialogs.openPanels.value(0).startFolder, work_.path());
    const int files = TestArchives::treeUnder(target.path()).size();
    QCOMPARE(ui.operationStatus->text(),
             QString("%1 files extracted to %2").arg(files).arg(target.path()));
    QVERIFY(!ui.operationStatus->failed());
    QVERIFY(!ui.operationStatus->showFolderButton()->isHidden());
    ui.operationStatus->showFolderButton()->click();
    QCOMPARE(fx.desktop.shownFolders, QStringList{target.path()});
  }

  void deletionSaysHowMany() {
    QTemporaryDir copy;
    const QString archive = copy.filePath("copy.7z");
    QFile::copy(good_, archive);
    Fixture fx;
    fx.open(archive);
    const QString first = fx.engine.ui().oppenedArchiveArrayController->entries().last().name;
    fx.selectRowsNamed({first});
    fx.engine.editing()->btnDeleteSelectedFilesFromArchive();
    QCOMPARE(fx.engine.ui().operationStatus->text(), QString("1 entry deleted from copy.7z"));
  }

  void failedExtractionStaysWithItsDetails() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->resize(900, 500);
    ui.mainWindow->show();
    fx.open(damaged_);
    QTemporaryDir target;
    fx.dialogs.openAnswers << QStringList{target.path()};
    fx.engine.extraction()->btnExtractAction();
    QVERIFY(ui.operationStatus->failed());
    QVERIFY(ui.operationStatus->text().contains("7z"));
    QPushButton* details = ui.operationStatus->detailsButton();
    QVERIFY(!details->isHidden());
    saveScreenshot(ui.mainWindow, "failed-extraction-status");

    details->click();
    auto* dialog = ui.mainWindow->findChild<QDialog*>("operationDetails");
    QVERIFY(dialog);
    auto* text = dialog->findChild<QPlainTextEdit*>("operationDetailsText");
    QVERIFY(text->toPlainText().contains("ERROR", Qt::CaseInsensitive));
    saveScreenshot(dialog, "failed-extraction-details");
    dialog->close();

    ui.tabContainer->setCurrentIndex(1);
    QVERIFY(!ui.operationStatus->failed());
    QVERIFY(ui.operationStatus->text().isEmpty());
  }

  void longExtractionShowsProgressAndCancels_data() {
    QTest::addColumn<int>("toolMs");
    QTest::addColumn<bool>("windowShown");
    QTest::newRow("quick run, no window") << 0 << false;
    QTest::newRow("long run, window") << 2 * LongRun::kWindowDelayMs << true;
  }

  void longExtractionShowsProgressAndCancels() {
    QFETCH(int, toolMs);
    QFETCH(bool, windowShown);
    // Looks at the window while the extraction runs, then presses Cancel.
    struct WatchingRunner : ProcessToolRunner {
      const MainWindowUi* ui = nullptr;
      QWidget* window = nullptr;
      int toolMs = 0;
      bool busy = false, cancelShown = false, windowSeen = false;
      int cancels = 0;
      ToolResult run(const ToolRun& run) override {
        if (ui && run.arguments.value(0) == "x") {
          QTest::qWait(toolMs);
          busy = QApplication::overrideCursor() &&
                 QApplication::overrideCursor()->shape() == Qt::BusyCursor;
          cancelShown = !ui->operationStatus->cancelButton()->isHidden();
          windowSeen = window->isVisible();
          ui->operationStatus->cancelButton()->click();
        }
        return ProcessToolRunner::run(run);
      }
      void cancel() override { ++cancels; }
    } runner;
    FakeDialogs dialogs;
    FakeDesktop desktop;
    Engine engine(runner, runner, dialogs, desktop);
    engine.ui().mainWindow->show();
    engine.openDialog({good_}, 1);
    runner.ui = &engine.ui();
    runner.window = engine.extraction()->extractionDialog();
    runner.toolMs = toolMs;
    QTemporaryDir target;
    engine.extraction()->openDialogForExtraction({target.path()}, 1);
    QVERIFY(runner.busy);
    QVERIFY(runner.cancelShown);
    QCOMPARE(runner.windowSeen, windowShown);
    QCOMPARE(runner.cancels, 1);
    QVERIFY(!QApplication::overrideCursor());
    QVERIFY(engine.ui().operationStatus->cancelButton()->isHidden());
    QVERIFY(!runner.window->isVisible());
    QTRY_VERIFY(engine.ui().openedArchiveTableView->hasFocus());
  }

  void alertsShowTheirKindAndRoom_data() {
    QTest::addColumn<bool>("goodNews");
    QTest::addColumn<int>("icon");
    QTest::newRow("good news") << true << int(QMessageBox::Information);
    QTest::newRow("failure") << false << int(QMessageBox::Warning);
  }

  void alertsShowTheirKindAndRoom() {
    QFETCH(bool, goodNews);
    QFETCH(int, icon);
    QtDialogs dialogs;
    int shownIcon = -1;
    int width = 0;
    QString shownText;
    QTimer::singleShot(0, [&] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      QVERIFY(box);
      shownIcon = box->icon();
      width = box->width();
      shownText = box->informativeText();
      box->accept();
    });
    const QString message = "Nothing in /home/user/a rather long folder name/archive.7z";
    if (goodNews)
      dialogs.notify("Archive test completed", message, "OK");
    else
      dialogs.alert("Archive test completed", message, "OK");
    QCOMPARE(shownIcon, icon);
    QVERIFY(width >= 420);
    QCOMPARE(shownText.remove(QChar(0x200B)), message);
  }

  void anUnlistedTypeSaysWhoseRowsAreShown() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    fx.open(good_);
    QVERIFY(ui.oppenedArchiveArrayController->rowCount() > 0);
    TestArchives::runIn(work_.path(), "tar", {"czf", "packed.tar.gz", "tree"});
    fx.open(work_.filePath("packed.tar.gz"));
    QVERIFY(ui.oppenedArchiveArrayController->rowCount() > 0);
    QCOMPARE(ui.operationStatus->text(),
             QString("Quillet does not list the contents of .gz archives; the rows shown are "
                     "those of the archive opened before"));
  }

  void openingAnotherArchiveClearsWhatWasShown() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    fx.open(damaged_);
    fx.engine.test()->btnTestAction();
    QVERIFY(ui.operationStatus->failed());
    QVERIFY(!ui.fileContentView->toPlainText().isEmpty());
    fx.open(good_);
    QVERIFY(!ui.operationStatus->failed());
    QVERIFY(ui.operationStatus->text().isEmpty());
    QVERIFY(ui.fileContentView->toPlainText().isEmpty());
    fx.engine.test()->btnTestAction();
    QCOMPARE(ui.operationStatus->text(), QString("good.7z: no errors found"));
  }
};

QTEST_MAIN(OperationStatusTest)
#include "tst_operation_status.moc"
