#include "engine/EntriesModel.h"
#include "engine/OwnTemporaryFolder.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"
#include "tools/FilePreview.h"
#include "tools/FilePreviewPanel.h"
#include "tools/PreviewRules.h"

#include <QDir>
#include <QDockWidget>
#include <QImage>
#include <QMainWindow>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

using TestArchives::contentOf;
using TestArchives::treeUnder;
using TestArchives::writeFile;

// The smallest GIF there is: Qt reads GIF but does not write it.
const QByteArray kGif = QByteArray::fromHex(
    "47494638396101000100800000000000ffffff21f90401000000002c00000000010001000002024401003b");

struct Fixture : EngineFixture<ProcessToolRunner> {
  FilePreview& preview() { return *engine.filePreview(); }
  FilePreviewPanel& panel() { return *preview().panel(); }
  int selectedRow() {
    const QModelIndexList rows =
        engine.ui().openedArchiveTableView->selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.first().row() : -1;
  }
};

QString sizeText(qint64 bytes) {
  return bytes <= 1048575 ? QString::number(bytes / 1024) + " KB"
                          : QString::asprintf("%.2f MB", bytes / 1048576.0);
}

}  // namespace

// The preview with real images in real zip archives; Quillet's temporary
// folder lies in a folder the test watches.
class FilePreviewTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  QTemporaryDir temp_;
  QString images_;
  QString secret_;

  void checkNothingElseTouched() {
    QVERIFY(!QFileInfo::exists(OwnTemporaryFolder::path()));
    QCOMPARE(QDir(temp_.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
             QStringList{"sentinel"});
    QCOMPARE(contentOf(temp_.filePath("sentinel")), QByteArray("keep"));
  }

 private slots:
  void initTestCase() {
    qputenv("TMPDIR", temp_.path().toUtf8());
    writeFile(temp_.filePath("sentinel"), "keep");
    const QString tree = work_.filePath("images");
    QDir().mkpath(tree + "/dir");
    QImage photo(64, 48, QImage::Format_RGB32);
    photo.fill(Qt::darkCyan);
    for (const char* name : {"photo.JPG", "photo.Jpg", "photo.jpeg"})
      QVERIFY(photo.save(tree + "/" + name, "JPG"));
    QVERIFY(photo.save(tree + "/shot.tiff", "TIFF"));
    writeFile(tree + "/dir/deep.gif", kGif);
    writeFile(tree + "/notes.txt", "not an image\n");
    QImage noise(800, 500, QImage::Format_RGB32);
    for (int y = 0; y < noise.height(); ++y)
      QRandomGenerator(y).fillRange(reinterpret_cast<quint32*>(noise.scanLine(y)), noise.width());
    QVERIFY(noise.save(tree + "/big.png", "PNG"));
    QVERIFY(QFileInfo(tree + "/big.png").size() > 1048575);
    images_ = work_.filePath("images archive.zip");
    TestArchives::runIn(tree, "7z", {"a", "-bd", images_, "."});
    secret_ = work_.filePath("secret.zip");
    TestArchives::runIn(tree, "7z", {"a", "-bd", "-psecret", secret_, "notes.txt"});
  }

  void imageEntriesAreShownWithTheirSize_data() {
    QTest::addColumn<QString>("entry");
    QTest::addColumn<bool>("shown");
    QTest::newRow("JPG") << "photo.JPG" << true;
    QTest::newRow("tiff") << "shot.tiff" << true;
    QTest::newRow("gif in a folder") << "dir/deep.gif" << true;
    QTest::newRow("png over a megabyte") << "big.png" << true;
    QTest::newRow("Jpg") << "photo.Jpg" << false;
    QTest::newRow("jpeg") << "photo.jpeg" << false;
    QTest::newRow("text") << "notes.txt" << false;
  }
  void imageEntriesAreShownWithTheirSize() {
    QFETCH(QString, entry);
    QFETCH(bool, shown);
    const TestArchives::Tree before = treeUnder(work_.path());
    Fixture fx;
    fx.open(images_);
    fx.selectRowsNamed({entry});
    fx.preview().btnGeneratePreview();
    QCOMPARE(!fx.panel().imagePreviewField()->image().isNull(), shown);
    const qint64 size = QFileInfo(work_.filePath("images/" + entry)).size();
    QCOMPARE(fx.panel().fileSizeField()->text(), shown ? sizeText(size) : QString());
    QVERIFY(fx.dialogs.alerts.isEmpty());
    checkNothingElseTouched();
    QCOMPARE(treeUnder(work_.path()), before);
  }

  void aFolderPlantedAtItsPlaceIsNotUsed() {
    QTemporaryDir victim(work_.filePath("victim-XXXXXX"));
    writeFile(victim.filePath("precious"), "data");
    const QString own = OwnTemporaryFolder::path().chopped(1);
    QVERIFY(QFile::link(victim.path(), own));
    Fixture fx;
    fx.open(images_);
    fx.selectRowsNamed({"photo.JPG"});
    fx.preview().btnGeneratePreview();
    QDir().remove(own);
    QCOMPARE(fx.dialogs.alerts.value(0).title, QString("No temporary folder"));
    QCOMPARE(treeUnder(victim.path()), (TestArchives::Tree{{"precious", "data"}}));
    checkNothingElseTouched();
  }

  void nextAndPreviousWalkToImages() {
    Fixture fx;
    fx.open(images_);
    fx.engine.ui().oppenedArchiveArrayController->setEntries(
        {{"notes.txt"}, {"photo.Jpg"}, {"photo.JPG"}, {"notes.txt"}, {"photo.jpeg"}});
    fx.selectRowsNamed({"photo.Jpg"});
    for (auto [step, row] : {std::pair{+1, 2}, {+1, 4}, {+1, 4}, {-1, 2}}) {
      step > 0 ? fx.preview().btnNext() : fx.preview().btnPrevious();
      QCOMPARE(fx.selectedRow(), row);
    }
    QVERIFY(!fx.panel().imagePreviewField()->image().isNull());
    fx.selectRowsNamed({"photo.jpeg"});
    QVERIFY(!fx.panel().nextButton()->isEnabled());
    QVERIFY(fx.panel().previousButton()->isEnabled());
    checkNothingElseTouched();
  }

  void savingKeepsTheEntrysNameAndItsFolder() {
    QTemporaryDir destination;
    Fixture fx;
    fx.open(images_);
    fx.selectRowsNamed({"dir/deep.gif"});
    fx.dialogs.saveAnswers << destination.filePath("renamed.png");
    fx.preview().btnExtractFile();
    QCOMPARE(treeUnder(destination.path()), (TestArchives::Tree{{"deep.gif", kGif}}));

    // Another name chosen over an existing file of the entry's name.
    writeFile(destination.filePath("deep.gif"), "mine");
    fx.dialogs.saveAnswers << destination.filePath("other.gif");
    fx.preview().btnExtractFile();
    QCOMPARE(fx.dialogs.alerts.value(0).title, QString("File exists"));
    QCOMPARE(contentOf(destination.filePath("deep.gif")), QByteArray("mine"));

    // A folder entry writes its files flat: they are checked too.
    fx.selectRowsNamed({"dir"});
    fx.dialogs.saveAnswers << destination.filePath("dir");
    fx.preview().btnExtractFile();
    QCOMPARE(fx.dialogs.alerts.size(), 2);
    QCOMPARE(contentOf(destination.filePath("deep.gif")), QByteArray("mine"));
  }

  void aWrongPasswordReplacesNothing() {
    QTemporaryDir destination;
    writeFile(destination.filePath("notes.txt"), "mine");
    Fixture fx;
    fx.open(secret_, "wrong");
    fx.selectRowsNamed({"notes.txt"});
    fx.dialogs.saveAnswers << destination.filePath("notes.txt");
    fx.preview().btnExtractFile();
    QCOMPARE(fx.dialogs.alerts.value(0).title, QString("Wrong password"));
    QCOMPARE(contentOf(destination.filePath("notes.txt")), QByteArray("mine"));
  }

  void openingHandsTheExtractedFileToTheDesktop() {
    Fixture fx;
    fx.open(images_);
    fx.selectRowsNamed({"photo.JPG"});
    fx.preview().btnOpenWithFinder();
    const QString file = OwnTemporaryFolder::path() + "photo.JPG";
    QCOMPARE(fx.desktop.openedFiles, QStringList{file});
    QVERIFY(QFileInfo(file).size() > 0);
    QDir(OwnTemporaryFolder::path()).removeRecursively();
  }

  void otherTypes_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<bool>("refused");
    QTest::newRow("tar") << "pictures.tar" << false;
    QTest::newRow("arj") << "pictures.arj" << true;
    QTest::newRow("lha") << "pictures.lha" << true;
  }
  void otherTypes() {
    QFETCH(QString, archive);
    QFETCH(bool, refused);
    QTemporaryDir folder;
    writeFile(folder.filePath(archive), "");
    Fixture fx;
    fx.open(folder.filePath(archive));
    fx.engine.ui().oppenedArchiveArrayController->setEntries({{"photo.png"}});
    fx.selectRowsNamed({"photo.png"});
    fx.panel().imagePreviewField()->setImage(QPixmap(8, 8));
    fx.preview().btnGeneratePreview();
    if (refused) {
      QCOMPARE(fx.dialogs.alerts.value(0).title, QString("Archive not supported"));
      QCOMPARE(fx.dialogs.alerts.value(0).message,
               QString("Previewing files from this type of archives is not supported."));
      QVERIFY(!fx.panel().imagePreviewField()->image().isNull());
    } else {
      // Nothing is extracted, so no image loads.
      QVERIFY(fx.dialogs.alerts.isEmpty());
      QVERIFY(fx.panel().imagePreviewField()->image().isNull());
      QCOMPARE(fx.panel().fileSizeField()->text(), QString("0 KB"));
    }
  }

  void imageNames_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("image");
    for (const char* name : {"a.jpg", "a.png", "a.gif", "a.tiff", "a.icns", "d/a.JPG", "a.PNG",
                             "a.GIF", "a.TIFF", "a.ICNS"})
      QTest::newRow(name) << name << true;
    for (const char* name : {"a.Jpg", "a.jpeg", "a.tif", "png", ".png", "a.svg"})
      QTest::newRow(name) << name << false;
  }
  void imageNames() {
    QFETCH(QString, name);
    QFETCH(bool, image);
    QCOMPARE(PreviewRules::isImage(name), image);
  }

  void screenshot() {
    const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (folder.isEmpty())
      QSKIP("no screenshot folder");
    Fixture fx;
    fx.open(images_);
    QMainWindow* window = fx.engine.ui().mainWindow;
    window->show();
    fx.engine.ui().btnExpandArchiveFilePreview->setChecked(true);
    QVERIFY(QTest::qWaitForWindowExposed(window));
    fx.selectRowsNamed({"big.png"});
    fx.preview().btnGeneratePreview();
    QTest::qWait(50);
    QDir().mkpath(folder);
    window->grab().save(folder + "/preview-panel.png");
  }
};

QTEST_MAIN(FilePreviewTest)
#include "tst_file_preview.moc"
