#include "FakeToolRunner.h"
#include "app/DropZone.h"
#include "create/CreateArchiveListView.h"
#include "create/CreateTab.h"
#include "create/SelectionListModel.h"
#include "platform/PreferencesStore.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QImage>
#include <QMainWindow>
#include <QMimeData>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

namespace {

const QString kDroppedFiles = QStringLiteral("droppedFiles");
constexpr Qt::DropActions kFileManagerOffers = Qt::CopyAction | Qt::MoveAction | Qt::LinkAction;

struct MainWindow : EngineFixture<FakeToolRunner> {
  DropZone* zone() const { return qobject_cast<DropZone*>(engine.ui().dropZone); }
  SelectionListModel* list() const { return engine.createTab()->list()->model(); }
  QStringList listedPaths() const {
    QStringList paths;
    for (const SelectionRow& row : list()->rows())
      paths << row.fullPath;
    return paths;
  }
};

bool droppedFilesKeyExists() {
  return QSettings(QStringLiteral("Quillet"), QStringLiteral("Quillet")).contains(kDroppedFiles);
}

QMimeData* filesFromFileManager(const QStringList& paths) {
  auto* data = new QMimeData;
  QList<QUrl> urls;
  for (const QString& path : paths)
    urls << QUrl::fromLocalFile(path);
  data->setUrls(urls);
  return data;
}

// What a drag over the zone answers: accepted, and with which action.
struct Answer {
  bool accepted;
  Qt::DropAction action;
};

Answer enter(QWidget* zone, const QMimeData* data, Qt::DropActions offered) {
  QDragEnterEvent event(zone->rect().center(), offered, data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(zone, &event);
  return {event.isAccepted(), event.dropAction()};
}

Answer move(QWidget* zone, const QMimeData* data, Qt::DropActions offered) {
  QDragMoveEvent event(zone->rect().center(), offered, data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(zone, &event);
  return {event.isAccepted(), event.dropAction()};
}

Answer drop(QWidget* zone, const QMimeData* data, Qt::DropActions offered = kFileManagerOffers) {
  enter(zone, data, offered);
  move(zone, data, offered);
  QDropEvent event(QPointF(zone->rect().center()), offered, data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(zone, &event);
  return {event.isAccepted(), event.dropAction()};
}

}  // namespace

// Files dragged from a file manager onto the drop zone end up in the
// selection list of the create tab.
class DropZoneTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;

 private slots:
  void init() {
    QSettings store(QStringLiteral("Quillet"), QStringLiteral("Quillet"));
    store.remove(kDroppedFiles);
  }

  void droppedFilesBecomeRows() {
    const QString first = work_.filePath("first photo.jpg");
    const QString second = work_.filePath("ünï.txt");
    TestArchives::writeFile(first, "jpeg");
    TestArchives::writeFile(second, "text");
    MainWindow window;
    const std::unique_ptr<QMimeData> data(filesFromFileManager({first, second}));

    const Answer answer = drop(window.zone(), data.get());

    QVERIFY(answer.accepted);
    QCOMPARE(answer.action, Qt::CopyAction);
    QTRY_COMPARE_WITH_TIMEOUT(window.list()->rowCount(), 2, 100);
    QCOMPARE(window.listedPaths(), QStringList({first, second}));
    QVERIFY(!droppedFilesKeyExists());
    QVERIFY(window.dialogs.alerts.isEmpty());
  }

  void dragsOfferingCopyAreTaken_data() {
    QTest::addColumn<int>("offered");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("copy, move or link") << int(kFileManagerOffers) << true;
    QTest::newRow("copy only") << int(Qt::CopyAction) << true;
    QTest::newRow("move only") << int(Qt::MoveAction) << false;
    QTest::newRow("link only") << int(Qt::LinkAction) << false;
  }
  void dragsOfferingCopyAreTaken() {
    QFETCH(int, offered);
    QFETCH(bool, accepted);
    MainWindow window;
    const std::unique_ptr<QMimeData> data(filesFromFileManager({work_.path()}));
    const Qt::DropActions actions(offered);
    const Answer entered = enter(window.zone(), data.get(), actions);
    QCOMPARE(entered.accepted, accepted);
    // Only a zone that took the drag hears of its moves.
    if (!accepted)
      return;
    QCOMPARE(entered.action, Qt::CopyAction);
    const Answer moved = move(window.zone(), data.get(), actions);
    QVERIFY(moved.accepted);
    QCOMPARE(moved.action, Qt::CopyAction);
  }

  // A drag without file names is taken while it moves (the user sees the
  // copy cursor) and fails when dropped.
  void dropWithoutFileNamesFails_data() {
    QTest::addColumn<QString>("kind");
    QTest::newRow("text") << "text";
    QTest::newRow("image") << "image";
    QTest::newRow("web address") << "web";
  }
  void dropWithoutFileNamesFails() {
    QFETCH(QString, kind);
    MainWindow window;
    QMimeData data;
    if (kind == "text") {
      data.setText(work_.path());
    } else if (kind == "image") {
      QImage image(8, 8, QImage::Format_RGB32);
      image.fill(Qt::red);
      data.setImageData(image);
    } else {
      data.setUrls({QUrl("https://example.org/photo.jpg")});
    }
    QVERIFY(enter(window.zone(), &data, kFileManagerOffers).accepted);

    const Answer answer = drop(window.zone(), &data);

    QVERIFY(!answer.accepted);
    QTRY_COMPARE(window.dialogs.alerts.size(), 1);
    QCOMPARE(window.dialogs.alerts[0].title, QString("Paste Error"));
    QCOMPARE(window.dialogs.alerts[0].message, QString("Sorry, but the past operation failed"));
    QCOMPARE(window.dialogs.alerts[0].button, QString("OK"));
    QVERIFY(!droppedFilesKeyExists());
    QTest::qWait(120);
    QCOMPARE(window.list()->rowCount(), 0);
  }

  void screenshot() {
    const QString shots = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (shots.isEmpty())
      QSKIP("no QUILLET_SCREENSHOT_DIR");
    MainWindow window;
    QMainWindow* main = window.engine.ui().mainWindow;
    main->resize(900, 560);
    main->show();
    window.engine.ui().tabContainer->setCurrentIndex(1);
    window.engine.tabSwitchObserver();
    QVERIFY(QTest::qWaitForWindowExposed(main));
    QDir().mkpath(shots);
    QVERIFY(main->grab().save(shots + "/drop-zone.png"));
    const std::unique_ptr<QMimeData> data(filesFromFileManager({work_.path()}));
    enter(window.zone(), data.get(), kFileManagerOffers);
    QVERIFY(window.zone()->grab().save(shots + "/drop-zone-dragging.png"));
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  DropZoneTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_drop_zone.moc"
