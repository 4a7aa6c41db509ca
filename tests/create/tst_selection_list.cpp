#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "create/CreateArchiveListView.h"
#include "create/FolderSize.h"
#include "create/SelectionListModel.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "platform/QtDesktop.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSettings>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <functional>
#include <utility>

Q_DECLARE_METATYPE(SelectionEntry)

namespace {

const QString kDroppedFiles = QStringLiteral("droppedFiles");

// Answers every du with the same kilobytes and lets a test look at the
// widget while a size is being measured.
class ObservedRunner : public FakeToolRunner {
 public:
  explicit ObservedRunner(const QByteArray& kilobytes = "512") {
    ToolResult result;
    result.output = kilobytes + "\t/measured\n";
    answer(
        "du", [](const QStringList&) { return true; }, result);
  }
  ToolResult run(const ToolRun& run) override {
    if (whileRunning)
      whileRunning();
    return FakeToolRunner::run(run);
  }
  std::function<void()> whileRunning;
};

struct ListWithFakes {
  ObservedRunner runner;
  FakeDialogs dialogs;
  FakeDesktop desktop;
  CreateArchiveListView view{runner, dialogs, desktop};

  QStringList column(QString SelectionRow::*field) const {
    QStringList values;
    for (const SelectionRow& row : view.model()->rows())
      values << row.*field;
    return values;
  }
  void add(SelectionEntry entry, const QStringList& paths) {
    switch (entry) {
      case SelectionEntry::Dropped:
        PreferencesStore::setList(kDroppedFiles, paths);
        view.timerUpdateFileList();
        break;
      case SelectionEntry::OpenPanel:
        view.openDialogForSelection(paths, 1);
        break;
      case SelectionEntry::AddFiles:
        view.addFiles(paths);
        break;
    }
  }
  void select(const QList<int>& rows) {
    for (int row : rows)
      view.tableView()->selectionModel()->select(
          view.model()->index(row, 0), QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }
};

QString writeFile(const QString& path, qint64 size) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly))
    qFatal("cannot write %s", qPrintable(path));
  file.write(QByteArray(size, 'q'));
  return path;
}

float duBytes(const QString& folder) {
  const QByteArray printed = TestArchives::runIn(folder, "du", {"-k", "-d", "0", "--", folder});
  return printed.split('\t').value(0).toFloat() * 1024.0f;
}

bool droppedFilesKeyExists() {
  return QSettings(QStringLiteral("Quillet"), QStringLiteral("Quillet")).contains(kDroppedFiles);
}

QByteArray settingsFile() {
  QFile file(QSettings(QStringLiteral("Quillet"), QStringLiteral("Quillet")).fileName());
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void forgetDroppedFiles() {
  QSettings settings(QStringLiteral("Quillet"), QStringLiteral("Quillet"));
  settings.remove(kDroppedFiles);
  settings.sync();
}

}  // namespace

class SelectionListTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  QString folder_;  // holds files of known lengths
  QString file_;    // 2000 bytes

 private slots:
  void initTestCase() {
    folder_ = work_.filePath("known folder");
    writeFile(folder_ + "/a.bin", 10000);
    writeFile(folder_ + "/b.bin", 200000);
    writeFile(folder_ + "/inner/c.bin", 70000);
    file_ = writeFile(work_.filePath("plain.bin"), 2000);
  }
  void init() { forgetDroppedFiles(); }
  void cleanupTestCase() { forgetDroppedFiles(); }

  void folderSizeTexts_data() {
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("dropped");
    QTest::addColumn<QString>("openPanel");
    QTest::addColumn<QString>("addFiles");
    QTest::newRow("whole kilobytes cut") << 1536LL << "1.50 KB"
                                         << "1.50 KB"
                                         << "1 KB";
    QTest::newRow("512 KB") << 524288LL << "512.00 KB"
                            << "512.00 KB"
                            << "512 KB";
    QTest::newRow("just under 1 MB") << 1048575LL << "1024.00 KB"
                                     << "1024.00 KB"
                                     << "1023 KB";
    QTest::newRow("exactly 1 MB") << 1048576LL << "1.00 MB"
                                  << "1.00 MB"
                                  << "1.00 MB";
    QTest::newRow("exactly 1 GB") << 1073741824LL << "1.00 GB"
                                  << "1.00 GB"
                                  << "1.00 GB";
    QTest::newRow("2.5 GB") << 2684354560LL << "2.50 GB"
                            << "2.50 GB"
                            << "2.50 GB";
  }
  void folderSizeTexts() {
    QFETCH(qint64, bytes);
    const float size = static_cast<float>(bytes);
    QTEST(SelectionSizeText::folder(size, SelectionEntry::Dropped), "dropped");
    QTEST(SelectionSizeText::folder(size, SelectionEntry::OpenPanel), "openPanel");
    QTEST(SelectionSizeText::folder(size, SelectionEntry::AddFiles), "addFiles");
  }

  void fileSizeTexts_data() {
    QTest::addColumn<qint64>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::newRow("100 bytes") << 100LL << "0.10 KB";
    QTest::newRow("exactly 1 MB") << 1048576LL << "1.00 MB";
    QTest::newRow("2 GB stays in MB") << 2147483648LL << "2048.00 MB";
  }
  void fileSizeTexts() {
    QFETCH(qint64, bytes);
    QTEST(SelectionSizeText::file(static_cast<float>(bytes)), "expected");
  }

  void duOutputIsRead_data() {
    QTest::addColumn<ToolResult>("result");
    QTest::addColumn<float>("bytes");
    ToolResult spaced;
    spaced.output = "3\t/some path/with spaces\n";
    QTest::newRow("number ends at the tab") << spaced << 3072.0f;
    ToolResult partlyUnreadable;
    partlyUnreadable.exitCode = 1;
    partlyUnreadable.output = "2048\t/x\n";
    partlyUnreadable.errors = "du: cannot read directory '/x/locked': Permission denied\n";
    QTest::newRow("total despite unreadable subfolder") << partlyUnreadable << 2097152.0f;
    ToolResult notStarted;
    notStarted.started = false;
    QTest::newRow("du cannot run") << notStarted << 0.0f;
  }
  void duOutputIsRead() {
    QFETCH(ToolResult, result);
    FakeToolRunner runner;
    runner.answer(
        "du", [](const QStringList&) { return true; }, result);
    QTEST(FolderSize::bytes(runner, "/x"), "bytes");
  }

  void realFolderIsMeasuredByDu() {
    ProcessToolRunner runner;
    const float measured = FolderSize::bytes(runner, folder_);
    QCOMPARE(measured, duBytes(folder_));
    QVERIFY2(measured >= 280000.0f, qPrintable(QString::number(measured)));
  }

  void onlyFoldersAreMeasuredByDu() {
    ListWithFakes list;
    list.view.addFiles({folder_, file_});
    QCOMPARE(list.runner.runs.size(), 1);
    QCOMPARE(list.runner.runs[0].program, QString("/usr/bin/du"));
    QCOMPARE(list.runner.runs[0].arguments, QStringList({"-k", "-d", "0", folder_}));
    QCOMPARE(list.desktop.fileIconRequests, QStringList({folder_, file_}));
  }

  void entryPointsWordSizes_data() {
    QTest::addColumn<SelectionEntry>("entry");
    QTest::addColumn<QString>("folderSize");
    QTest::addColumn<bool>("progressShown");
    QTest::newRow("dropped") << SelectionEntry::Dropped << "512.00 KB" << false;
    QTest::newRow("open panel") << SelectionEntry::OpenPanel << "512.00 KB" << true;
    QTest::newRow("add files") << SelectionEntry::AddFiles << "512 KB" << true;
  }
  void entryPointsWordSizes() {
    QFETCH(SelectionEntry, entry);
    QFETCH(QString, folderSize);
    QFETCH(bool, progressShown);
    ListWithFakes list;
    auto* label = list.view.findChild<QLabel*>("calculatingSizesLabel");
    auto* spin = list.view.findChild<QProgressBar*>("calculatingSizesSpin");
    QList<bool> shownWhileSizing;
    list.runner.whileRunning = [&] {
      shownWhileSizing << label->isVisibleTo(&list.view) << spin->isVisibleTo(&list.view);
    };
    const QString missing = work_.filePath("no such item");

    list.add(entry, {folder_, file_, missing});

    QCOMPARE(list.column(&SelectionRow::name),
             QStringList({"known folder", "plain.bin", "no such item"}));
    QCOMPARE(list.column(&SelectionRow::fullPath), QStringList({folder_, file_, missing}));
    QCOMPARE(list.column(&SelectionRow::fileSize), QStringList({folderSize, "1.95 KB", "0.00 KB"}));
    QCOMPARE(shownWhileSizing, QList<bool>({progressShown, progressShown}));
    QVERIFY(label->isHidden() && spin->isHidden());
  }

  void droppedFilesLeftAloneWhenThereAreNone_data() {
    QTest::addColumn<bool>("present");
    QTest::newRow("absent") << false;
    QTest::newRow("empty list") << true;
  }
  void droppedFilesLeftAloneWhenThereAreNone() {
    QFETCH(bool, present);
    if (present)
      PreferencesStore::setList(kDroppedFiles, {});
    ListWithFakes list;
    list.view.timerUpdateFileList();
    QTest::qWait(120);
    QCOMPARE(list.view.model()->rowCount(), 0);
    QCOMPARE(droppedFilesKeyExists(), present);
  }

  void droppedFilesArePickedUpByTheTimer() {
    ListWithFakes list;
    PreferencesStore::setList(kDroppedFiles, {file_, folder_});
    QTRY_COMPARE(list.view.model()->rowCount(), 2);
    QCOMPARE(list.column(&SelectionRow::fullPath), QStringList({file_, folder_}));
    QVERIFY(!droppedFilesKeyExists());
    QVERIFY2(!settingsFile().contains(kDroppedFiles.toUtf8()), settingsFile().constData());
    QTest::qWait(120);
    QCOMPARE(list.view.model()->rowCount(), 2);
  }

  // Sizing a folder keeps the event loop turning, so the drop zone may
  // leave another list meanwhile; it must survive for the next round.
  void dropDuringSizingIsKept() {
    ListWithFakes list;
    list.runner.whileRunning = [&] {
      if (!droppedFilesKeyExists())
        PreferencesStore::setList(kDroppedFiles, {file_});
    };
    list.add(SelectionEntry::Dropped, {folder_});
    list.runner.whileRunning = nullptr;
    list.view.timerUpdateFileList();
    QCOMPARE(list.column(&SelectionRow::fullPath), QStringList({folder_, file_}));
    QVERIFY(!droppedFilesKeyExists());
  }

  // du keeps the event loop turning, so the timer fires while a size is
  // measured; the paths must not be added a second time meanwhile.
  void timerFiringDuringSizingAddsNothingTwice() {
    ListWithFakes list;
    bool fired = false;
    list.runner.whileRunning = [&] {
      if (!std::exchange(fired, true))
        list.view.timerUpdateFileList();
    };
    list.add(SelectionEntry::Dropped, {folder_, file_});
    QCOMPARE(list.view.model()->rowCount(), 2);

    fired = false;
    PreferencesStore::setList(kDroppedFiles, {file_});
    list.view.addFiles({folder_});
    list.view.timerUpdateFileList();
    QCOMPARE(list.column(&SelectionRow::fullPath).mid(2), QStringList({folder_, file_}));
  }

  void samePathTwiceGivesTwoRows() {
    ListWithFakes list;
    list.view.addFiles({file_, file_});
    list.view.openDialogForSelection({file_}, 1);
    QCOMPARE(list.column(&SelectionRow::fullPath), QStringList({file_, file_, file_}));
  }

  void addButtonAsksForFilesAndFolders() {
    ListWithFakes list;
    list.dialogs.openAnswers << QStringList{file_, folder_};
    list.view.findChild<QPushButton*>("btnAddContent")->click();
    QCOMPARE(list.dialogs.openPanels.size(), 1);
    const Dialogs::OpenPanel& panel = list.dialogs.openPanels[0];
    QCOMPARE(panel.title, QString("Select items"));
    QVERIFY(panel.chooseFiles && panel.chooseFolders && panel.multipleSelection);
    QVERIFY(!panel.canCreateFolders);
    QVERIFY(panel.startFolder.isEmpty() && panel.extensions.isEmpty());
    QCOMPARE(list.column(&SelectionRow::fileSize), QStringList({"1.95 KB", "512.00 KB"}));
  }

  void cancellingChangesNothing() {
    ListWithFakes list;
    list.view.addFiles({file_});
    list.view.btnAddContent();
    list.view.openDialogForSelection({folder_}, 0);
    QCOMPARE(list.dialogs.openPanels.size(), 1);
    QCOMPARE(list.column(&SelectionRow::fullPath), QStringList({file_}));
    QVERIFY(list.runner.runs.isEmpty());
  }

  void selectedRowsAreRemoved_data() {
    QTest::addColumn<bool>("byKey");
    QTest::newRow("remove button") << false;
    QTest::newRow("delete key") << true;
  }
  void selectedRowsAreRemoved() {
    QFETCH(bool, byKey);
    ListWithFakes list;
    for (const char* name : {"one", "two", "three", "four"})
      list.view.addFiles({writeFile(work_.filePath(name), 10)});
    auto* remove = list.view.findChild<QPushButton*>("btnRemoveSelectedItems");
    QVERIFY(!remove->isEnabled());

    list.select({2, 0});
    QVERIFY(remove->isEnabled());
    if (byKey) {
      list.view.show();
      QVERIFY(QTest::qWaitForWindowActive(&list.view));
      list.view.tableView()->setFocus();
      QTest::keyClick(list.view.tableView(), Qt::Key_Delete);
    } else {
      remove->click();
    }
    QCOMPARE(list.column(&SelectionRow::name), QStringList({"two", "four"}));
    QVERIFY(!remove->isEnabled());
  }

  // Sized by the real du: a leading dash must not reach it as an option,
  // even when the item was given relative to the current folder.
  void awkwardNames_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("spaces") << "two  spaces here";
    QTest::newRow("quotes") << "it's \"quoted\"";
    QTest::newRow("leading dash") << "-rf dash";
    QTest::newRow("non-ASCII") << "ünï cödé 日本";
  }
  void awkwardNames() {
    QFETCH(QString, name);
    const QString parent = work_.filePath("awkward");
    const QString folder = parent + u'/' + name;
    const QString file = writeFile(folder + u'/' + name + ".txt", 3000);
    ProcessToolRunner runner;
    FakeDialogs dialogs;
    FakeDesktop desktop;
    CreateArchiveListView view(runner, dialogs, desktop);
    const QString previous = QDir::currentPath();
    QDir::setCurrent(parent);
    view.addFiles({name, file});
    QDir::setCurrent(previous);

    const QList<SelectionRow>& rows = view.model()->rows();
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[0].name, name);
    QCOMPARE(rows[0].fullPath, folder);
    QCOMPARE(rows[0].fileSize,
             SelectionSizeText::folder(duBytes(folder), SelectionEntry::AddFiles));
    QCOMPARE(rows[1].name, name + ".txt");
    QCOMPARE(rows[1].fileSize, QString("2.93 KB"));
  }

  void screenshot() {
    const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (folder.isEmpty())
      QSKIP("no QUILLET_SCREENSHOT_DIR");
    ProcessToolRunner runner;
    FakeDialogs dialogs;
    QtDesktop desktop;
    CreateArchiveListView view(runner, dialogs, desktop);
    view.resize(560, 300);
    view.addFiles({folder_, file_, work_.filePath("awkward")});
    view.tableView()->selectRow(1);
    view.findChild<QLabel*>("calculatingSizesLabel")->show();
    view.findChild<QProgressBar*>("calculatingSizesSpin")->show();
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QDir().mkpath(folder);
    QVERIFY(view.grab().save(folder + "/selection-list.png"));
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  SelectionListTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_selection_list.moc"
