#include "app/Engine.h"
#include "create/ArchiveCreation.h"
#include "create/CreateArchiveListView.h"
#include "create/CreateArchiveWindow.h"
#include "create/CreateTab.h"
#include "create/SelectionListModel.h"
#include "engine/EntriesProxy.h"
#include "engine/EntryOpening.h"
#include "engine/Extraction.h"
#include "engine/OperationStatus.h"
#include "engine/OwnTemporaryFolder.h"
#include "platform/ProcessToolRunner.h"
#include "platform/QtDesktop.h"
#include "support/EngineFixture.h"
#include "support/Screenshot.h"
#include "support/TestArchives.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenu>
#include <QMimeData>
#include <QMouseEvent>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

using Fixture = EngineFixture<ProcessToolRunner>;

namespace {

QStringList shownNames(const MainWindowUi& ui) {
  QStringList names;
  const QAbstractItemModel* rows = ui.openedArchiveTableView->model();
  for (int i = 0; i < rows->rowCount(); ++i)
    names << rows->index(i, 0).data().toString();
  return names;
}

void clickHeader(const MainWindowUi& ui, int column) {
  QHeaderView* header = ui.openedArchiveTableView->horizontalHeader();
  const QPoint centre(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                      header->height() / 2);
  QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, centre);
}

}  // namespace

class EntriesTableTest : public QObject {
  Q_OBJECT

  QTemporaryDir work_;
  QString archive_;

 private slots:
  void initTestCase() {
    for (const char* name : {"b10.txt", "b9.txt", "A1.txt", "c.txt"})
      TestArchives::writeFile(work_.filePath(QString("tree/") + name), name);
    archive_ = work_.filePath("names.7z");
    // Listed in the order given, which is no sorted order.
    TestArchives::runIn(work_.filePath("tree"), "7z",
                        {"a", "-bd", archive_, "b10.txt", "c.txt", "b9.txt", "A1.txt"});
  }

  void headerClicksSortAndReverse() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->show();
    fx.open(archive_);
    const QStringList toolOrder = shownNames(ui);
    QCOMPARE(toolOrder.size(), 4);
    clickHeader(ui, 0);
    QCOMPARE(shownNames(ui), (QStringList{"A1.txt", "b9.txt", "b10.txt", "c.txt"}));
    clickHeader(ui, 0);
    QCOMPARE(shownNames(ui), (QStringList{"c.txt", "b10.txt", "b9.txt", "A1.txt"}));
  }

  void filterNarrowsAndSelectionNamesTheRightEntries() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->show();
    fx.open(archive_);
    ui.openedArchiveTableView->sortByColumn(0, Qt::DescendingOrder);
    QTest::keyClick(ui.mainWindow, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(ui.entriesFilter->hasFocus());
    QTest::keyClicks(ui.entriesFilter, "B");
    QCOMPARE(shownNames(ui), (QStringList{"b10.txt", "b9.txt"}));
    QCOMPARE(ui.fieldOpenedArchiveNumberOfFiles->text(), QString("4"));

    ui.openedArchiveTableView->selectRow(1);
    QTemporaryDir target;
    fx.dialogs.openAnswers << QStringList{target.path()};
    fx.engine.extraction()->btnExtractSelected();
    QCOMPARE(QDir(target.path()).entryList(QDir::Files), QStringList{"b9.txt"});

    QTest::keyClick(ui.entriesFilter, Qt::Key_Return);
    QVERIFY(ui.openedArchiveTableView->hasFocus());
    QTest::keyClick(ui.mainWindow, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClick(ui.entriesFilter, Qt::Key_Escape);
    QVERIFY(ui.entriesFilter->text().isEmpty());
    QVERIFY(ui.openedArchiveTableView->hasFocus());

    QTest::keyClicks(ui.entriesFilter, "B");
    fx.open(archive_);
    QVERIFY(ui.entriesFilter->text().isEmpty());
    QCOMPARE(shownNames(ui).size(), 4);
  }

  void actionsFollowTheState() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    const auto enabled = [&ui] {
      return QList<bool>{
          ui.btnExtractAction->isEnabled(),   ui.btnTestAction->isEnabled(),
          ui.addFilesToArchive->isEnabled(),  ui.btnDeleteSelectedFilesFromArchive->isEnabled(),
          ui.btnExtractSelected->isEnabled(), ui.btnConvert->isEnabled()};
    };
    QCOMPARE(enabled(), (QList<bool>{false, false, false, false, false, false}));
    ui.tabContainer->setCurrentIndex(1);
    QCOMPARE(enabled(), (QList<bool>{false, false, true, false, false, false}));
    ui.tabContainer->setCurrentIndex(0);
    fx.open(archive_);
    QCOMPARE(enabled(), (QList<bool>{true, true, true, false, false, true}));
    ui.openedArchiveTableView->selectRow(0);
    QCOMPARE(enabled(), (QList<bool>{true, true, true, true, true, true}));
  }

  void addFilesOnTheCreateTabFillsTheList() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.tabContainer->setCurrentIndex(1);
    fx.dialogs.openAnswers << QStringList{work_.filePath("tree/c.txt")};
    ui.addFilesToArchive->trigger();
    QTRY_COMPARE(fx.engine.createTab()->list()->model()->rowCount(), 1);
  }

  // Enter creates the archive wherever the focus is but on Cancel; the
  // buttons inside the form act on a click or Space only.
  void enterInTheCreateWindowCreates_data() {
    QTest::addColumn<QString>("focused");
    QTest::newRow("help") << "btnHelpCreateArchive";
    QTest::newRow("ftp settings") << "btnFTPSettings";
    QTest::newRow("e-mail settings") << "btnOpenEmailSettings";
  }
  void enterInTheCreateWindowCreates() {
    QFETCH(QString, focused);
    Fixture fx;
    CreateArchiveWindow* window = fx.engine.creation()->createArchiveWindow();
    QObject::disconnect(window, &CreateArchiveWindow::compressRequested, nullptr, nullptr);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    auto* button = window->findChild<QPushButton*>(focused);
    QVERIFY(button);
    button->setEnabled(true);
    button->setFocus();
    QSignalSpy compress(window->findChild<QPushButton*>("btnCompress"), &QPushButton::clicked);
    QSignalSpy other(button, &QPushButton::clicked);
    QTest::keyClick(button, Qt::Key_Return);
    QCOMPARE(compress.size(), 1);
    QCOMPARE(other.size(), 0);
  }

  void doubleClickOrEnterOpensTheEntry_data() {
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("enter");
    QTest::newRow("double-click") << QString() << false;
    QTest::newRow("enter") << QString() << true;
    QTest::newRow("protected archive") << "s3cret" << false;
  }

  void doubleClickOrEnterOpensTheEntry() {
    QFETCH(QString, password);
    QFETCH(bool, enter);
    QString archive = archive_;
    if (!password.isEmpty()) {
      archive = work_.filePath("protected.7z");
      if (!QFile::exists(archive))
        TestArchives::runIn(work_.filePath("tree"), "7z",
                            {"a", "-bd", "-p" + password, "-mhe=on", archive, "b9.txt", "c.txt"});
    }
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->show();
    fx.open(archive, password.isEmpty() ? QString() : password);
    ui.openedArchiveTableView->sortByColumn(0, Qt::AscendingOrder);
    const int row = shownNames(ui).indexOf("b9.txt");
    const QModelIndex index = ui.openedArchiveTableView->model()->index(row, 0);
    if (enter) {
      ui.openedArchiveTableView->setCurrentIndex(index);
      QTest::keyClick(ui.openedArchiveTableView, Qt::Key_Return);
    } else {
      // As a window system delivers it: a click, then the double-click.
      const QPoint point = ui.openedArchiveTableView->visualRect(index).center();
      QTest::mouseClick(ui.openedArchiveTableView->viewport(), Qt::LeftButton, {}, point);
      QMouseEvent doubleClick(QEvent::MouseButtonDblClick, point,
                              ui.openedArchiveTableView->viewport()->mapToGlobal(point),
                              Qt::LeftButton, Qt::LeftButton, {});
      QApplication::sendEvent(ui.openedArchiveTableView->viewport(), &doubleClick);
    }
    QCOMPARE(fx.desktop.openedFiles.size(), 1);
    const QString opened = fx.desktop.openedFiles.first();
    QVERIFY2(opened.startsWith(OwnTemporaryFolder::path()), qPrintable(opened));
    QCOMPARE(TestArchives::contentOf(opened), QByteArray("b9.txt"));
    QTRY_VERIFY(ui.openedArchiveTableView->hasFocus());
  }

  void contextMenuActsOnTheRowUnderThePointer() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->resize(800, 500);
    ui.mainWindow->show();
    fx.open(archive_);
    QTableView* table = ui.openedArchiveTableView;
    const QPoint point = table->visualRect(table->model()->index(2, 0)).center();
    emit table->customContextMenuRequested(point);
    QMenu* menu = fx.engine.entryOpening()->contextMenu();
    QVERIFY(menu->isVisible());
    QCOMPARE(table->selectionModel()->selectedRows().size(), 1);
    QCOMPARE(table->selectionModel()->selectedRows().first().row(), 2);
    QStringList texts;
    for (QAction* action : menu->actions())
      if (!action->isSeparator() && action->isEnabled())
        texts << action->text().remove(u'&');
    QCOMPARE(texts, (QStringList{"Open", "Extract Selected…", "Delete", "Test"}));
    saveScreenshot(menu, "entries-context-menu");
    menu->hide();
  }

  void draggedRowsBecomeExtractedFiles() {
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    fx.open(archive_);
    fx.selectRowsNamed({"c.txt", "A1.txt"});
    QAbstractItemModel* rows = ui.openedArchiveTableView->model();
    QVERIFY(rows->flags(rows->index(0, 0)) & Qt::ItemIsDragEnabled);
    std::unique_ptr<QMimeData> data(
        rows->mimeData(ui.openedArchiveTableView->selectionModel()->selectedRows()));
    QVERIFY(data);
    QStringList contents;
    for (const QUrl& url : data->urls()) {
      QVERIFY(url.toLocalFile().startsWith(OwnTemporaryFolder::path()));
      contents << TestArchives::contentOf(url.toLocalFile());
    }
    contents.sort();
    QCOMPARE(contents, (QStringList{"A1.txt", "c.txt"}));
  }

  void dropsOpenOrOfferToAdd_data() {
    QTest::addColumn<QString>("dropped");
    QTest::addColumn<bool>("answer");
    QTest::addColumn<int>("rowsAfter");
    QTest::addColumn<int>("questions");
    QTest::newRow("archive opens") << "other.7z" << false << 1 << 0;
    QTest::newRow("file added when confirmed") << "new.txt" << true << 5 << 1;
    QTest::newRow("file left when declined") << "new.txt" << false << 4 << 1;
  }

  void dropsOpenOrOfferToAdd() {
    QFETCH(QString, dropped);
    QFETCH(bool, answer);
    QFETCH(int, rowsAfter);
    QFETCH(int, questions);
    QTemporaryDir folder;
    const QString archive = folder.filePath("names.7z");
    QFile::copy(archive_, archive);
    TestArchives::writeFile(folder.filePath("new.txt"), "new");
    TestArchives::runIn(folder.path(), "7z", {"a", "-bd", "other.7z", "new.txt"});
    Fixture fx;
    const MainWindowUi& ui = fx.engine.ui();
    ui.mainWindow->show();
    fx.open(archive);
    fx.dialogs.askAnswers << answer;
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(folder.filePath(dropped))});
    QWidget* page = ui.tabContainer->widget(0);
    // As a window system delivers it: the drag enters, then drops.
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(page, &enter);
    QVERIFY(enter.isAccepted());
    QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
    QApplication::sendEvent(page, &drop);
    QCOMPARE(ui.oppenedArchiveArrayController->rowCount(), rowsAfter);
    QCOMPARE(fx.dialogs.questions.size(), questions);
  }

  void largeListingSortedAndFiltered_data() {
    QTest::addColumn<QSize>("size");
    QTest::newRow("small") << QSize(800, 500);
    QTest::newRow("large") << QSize(1600, 1000);
  }

  void largeListingSortedAndFiltered() {
    QFETCH(QSize, size);
    static QString big;
    if (big.isEmpty()) {
      const QString root = work_.filePath("big");
      for (int folder = 0; folder < 200; ++folder)
        for (int file = 0; file < 100; ++file)
          TestArchives::writeFile(root + QString("/folder %1/report-%2.txt").arg(folder).arg(file),
                                  "x");
      big = work_.filePath("big.7z");
      TestArchives::runIn(root, "7z", {"a", "-bd", big, "."});
    }
    // The desktop's own icons, as a user sees them.
    ProcessToolRunner runner;
    FakeDialogs dialogs;
    QtDesktop desktop;
    Engine engine(runner, runner, dialogs, desktop);
    const MainWindowUi& ui = engine.ui();
    ui.mainWindow->resize(size);
    ui.mainWindow->show();
    engine.openDialog({big}, 1);
    QVERIFY(ui.entriesProxy->rowCount() >= 20000);
    clickHeader(ui, 0);
    ui.entriesFilter->setText("folder 12/");
    QCOMPARE(ui.entriesProxy->rowCount(), 100);
    QCOMPARE(shownNames(ui).mid(0, 3),
             (QStringList{"folder 12/report-0.txt", "folder 12/report-1.txt",
                          "folder 12/report-2.txt"}));
    saveScreenshot(ui.mainWindow,
                   QString("main-window-%1x%2").arg(size.width()).arg(size.height()));
  }
};

QTEST_MAIN(EntriesTableTest)
#include "tst_entries_table.moc"
