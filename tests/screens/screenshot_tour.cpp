// Walks the main window through the states the README shows and saves a
// picture of the screen for each: run by scripts/screenshots.sh on an X
// server with a window manager, so the pictures carry the window frames.

#include "FakeDialogs.h"
#include "app/Engine.h"
#include "engine/EntriesModel.h"
#include "engine/Extraction.h"
#include "engine/OperationStatus.h"
#include "platform/ProcessToolRunner.h"
#include "platform/QtDesktop.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDateTime>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QHeaderView>
#include <QIcon>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QRandomGenerator>
#include <QScreen>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <cstdio>
#include <cstdlib>

namespace {

// The real tools and the real desktop, for the rows' icons; the panels are
// answered from a script.
struct Tour {
  ProcessToolRunner runner;
  FakeDialogs dialogs;
  QtDesktop desktop;
  Engine engine{runner, runner, dialogs, desktop};

  void open(const QString& archive) { engine.openDialog({archive}, 1); }
};

constexpr int kShoots = 200;
constexpr int kFilesPerShoot = 99;  // with the folders, 20,000 rows
constexpr int kWaitMs = 30000;
constexpr int kPaintMs = 400;

// A photo library as people keep them: folders of pictures with a few
// notes and documents, sizes and dates spread out.
QString makeLibrary(const QString& work) {
  static const QStringList kinds = {".jpg", ".jpg", ".jpg", ".png", ".txt", ".pdf", ""};
  QRandomGenerator random(2026);
  const QDateTime start(QDate(2025, 1, 1), QTime(9, 0));
  const QString root = work + QStringLiteral("/library");
  for (int shoot = 1; shoot <= kShoots; ++shoot) {
    const QString folder = root + QStringLiteral("/shoot-%1").arg(shoot, 3, 10, QChar(u'0'));
    QDir().mkpath(folder);
    for (int file = 1; file <= kFilesPerShoot; ++file) {
      const QString kind = kinds[file % kinds.size()];
      const QString name = kind.isEmpty()
                               ? QStringLiteral("NOTES-%1").arg(file)
                               : QStringLiteral("IMG_%1%2").arg(file, 4, 10, QChar(u'0')).arg(kind);
      // Sparse files: the sizes without the disk space.
      QFile out(folder + u'/' + name);
      out.open(QIODevice::WriteOnly);
      out.resize(random.bounded(120000));
      out.setFileTime(start.addSecs(random.bounded(365 * 24 * 3600)),
                      QFileDevice::FileModificationTime);
    }
  }
  const QString archive = work + QStringLiteral("/holiday photos.7z");
  TestArchives::runIn(root, QStringLiteral("7z"), {"a", "-bd", "-mx1", archive, "."});
  return archive;
}

QString makeDamaged(const QString& work) {
  TestArchives::writeFile(work + QStringLiteral("/big/report.pdf"), QByteArray(200000, 'q'));
  const QString archive = work + QStringLiteral("/damaged download.7z");
  TestArchives::runIn(work + QStringLiteral("/big"), QStringLiteral("7z"),
                      {"a", "-bd", "-mx0", archive, "report.pdf"});
  QFile file(archive);
  file.open(QIODevice::ReadWrite);
  file.seek(1000);
  file.write("broken");
  return archive;
}

// Waits for what the picture must show, then lets the window paint it.
template <typename Condition>
void settle(Condition shown) {
  if (!QTest::qWaitFor(shown, kWaitMs)) {
    std::fprintf(stderr, "screenshot_tour: the window did not reach its state\n");
    std::exit(1);
  }
  QTest::qWait(kPaintMs);
}

void settle() {
  settle([] { return true; });
}

// The screen where the windows are, frames included.
void save(const QList<QWidget*>& windows, const QString& path) {
  QRect area;
  for (QWidget* window : windows)
    area |= window->frameGeometry();
  QGuiApplication::primaryScreen()
      ->grabWindow(0, area.x(), area.y(), area.width(), area.height())
      .save(path);
  std::printf("%s\n", qPrintable(path));
}

void showAt(QMainWindow* window, QSize size) {
  window->resize(size);
  window->move(20, 20);
  window->show();
  window->activateWindow();
  (void)QTest::qWaitForWindowExposed(window);
  settle();
}

// clicks: one sorts up, two sort down.
void sortAndFilter(const MainWindowUi& ui, int column, int clicks, const QString& filter) {
  QHeaderView* header = ui.openedArchiveTableView->horizontalHeader();
  const QPoint middle(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                      header->height() / 2);
  for (int click = 0; click < clicks; ++click)
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, middle);
  ui.entriesFilter->clear();
  QTest::keyClicks(ui.entriesFilter, filter);
  settle();
}

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  if (argc < 2) {
    std::fprintf(stderr, "usage: screenshot_tour FOLDER\n");
    return 2;
  }
  const QString out = QDir(QString::fromLocal8Bit(argv[1])).absolutePath();
  QDir().mkpath(out);
  QTemporaryDir work;
  const QString library = makeLibrary(work.path());
  const QString damaged = makeDamaged(work.path());

  Tour fx;
  const MainWindowUi& ui = fx.engine.ui();
  QMainWindow* window = ui.mainWindow;
  showAt(window, {800, 500});
  fx.open(library);
  settle([&ui] {
    return ui.oppenedArchiveArrayController->rowCount() == kShoots * (kFilesPerShoot + 1);
  });
  sortAndFilter(ui, EntriesModel::Name, 1, QStringLiteral("shoot-19"));
  save({window}, out + QStringLiteral("/main-800x500.png"));

  showAt(window, {1600, 1000});
  sortAndFilter(ui, EntriesModel::DateModified, 2, QStringLiteral(".pdf"));
  save({window}, out + QStringLiteral("/main-1600x1000.png"));

  showAt(window, {1000, 640});
  QTableView* table = ui.openedArchiveTableView;
  const QPoint row = table->visualRect(table->model()->index(3, 0)).center();
  emit table->customContextMenuRequested(row);
  auto* menu = window->findChild<QMenu*>(QStringLiteral("entriesContextMenu"));
  settle([menu] { return menu->isVisible(); });
  save({window, menu}, out + QStringLiteral("/context-menu.png"));
  menu->close();

  fx.open(damaged);
  QTemporaryDir target;
  fx.dialogs.openAnswers << QStringList{target.path()};
  fx.engine.extraction()->btnExtractAction();
  settle([&ui] { return ui.operationStatus->failed(); });
  save({window}, out + QStringLiteral("/failed-extraction.png"));
  ui.operationStatus->detailsButton()->click();
  QDialog* details = nullptr;
  settle([&] {
    details = window->findChild<QDialog*>(QStringLiteral("operationDetails"));
    return details && details->isVisible();
  });
  details->move(window->frameGeometry().center() - details->rect().center());
  settle();
  save({window, details}, out + QStringLiteral("/failed-extraction-details.png"));
  return 0;
}
