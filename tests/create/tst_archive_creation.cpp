#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "app/Engine.h"
#include "create/ArchiveCreation.h"
#include "create/CompressingWindow.h"
#include "create/CreateArchiveListView.h"
#include "create/CreateArchiveWindow.h"
#include "create/CreateTab.h"
#include "create/JobSettings.h"
#include "engine/OperationStatus.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/TestArchives.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QStandardPaths>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

// The create tab, its options window and the job as a person drives them,
// in a real window.
class ArchiveCreationTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;

  struct Window {
    ProcessToolRunner runner;
    ProcessToolRunner jobRunner;
    FakeDialogs dialogs;
    FakeDesktop desktop;
    Engine engine{runner, jobRunner, dialogs, desktop};

    ArchiveCreation* creation() { return engine.creation(); }
    CreateArchiveWindow* options() { return creation()->createArchiveWindow(); }
    template <typename Widget>
    Widget* find(const char* name) {
      return options()->findChild<Widget*>(QString::fromLatin1(name));
    }
  };

  static void screenshot(QWidget* widget, const QString& name) {
    const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (folder.isEmpty() || !QDir().mkpath(folder))
      return;
    QTest::qWait(50);  // let pending layout requests settle
    widget->grab().save(folder + u'/' + name);
  }

  QString fileNamed(const QString& name, const QByteArray& content) {
    QFile file(work_.filePath(name));
    file.open(QIODevice::WriteOnly);
    file.write(content);
    return file.fileName();
  }

 private slots:
  void anEmptyListAsksForItems() {
    Window window;
    window.creation()->btnCreateAction();
    QCOMPARE(window.dialogs.alerts.size(), 1);
    QCOMPARE(window.dialogs.alerts[0].title, QString("Attention"));
    QCOMPARE(window.dialogs.alerts[0].message,
             QString("Please add at least one file or folder to your archive."));
    QCOMPARE(window.dialogs.alerts[0].button, QString("Close"));
    QVERIFY(window.dialogs.savePanels.isEmpty());
  }

  void theSavePanelProposesUntitledOnTheDesktop() {
    Window window;
    window.engine.createTab()->list()->addFiles({fileNamed("a.txt", "a")});
    window.creation()->btnCreateAction();
    QCOMPARE(window.dialogs.savePanels.size(), 1);
    QCOMPARE(window.dialogs.savePanels[0].fileName, QString("untitled"));
    QCOMPARE(window.dialogs.savePanels[0].startFolder,
             QStandardPaths::writableLocation(QStandardPaths::DesktopLocation));
    QVERIFY(!window.options()->isVisible());

    window.dialogs.saveAnswers << work_.filePath("mine");
    window.creation()->btnCreateAction();
    QVERIFY(window.options()->isVisible());
    QCOMPARE(window.options()->selectionForCompression()->text(), work_.filePath("mine"));
  }

  void everyItemDisablesSplitAndSfxWithoutUnchecking() {
    Window window;
    window.engine.createTab()->list()->addFiles({fileNamed("a.txt", "a")});
    window.find<QCheckBox>("chkSplitToVolumes")->click();
    window.engine.createTab()->chkEveryItemNewArchive()->click();
    window.creation()->btnCreateAction();
    QCOMPARE(window.creation()->itemToCompress(), QString("unknown"));
    QCOMPARE(window.options()->selectionForCompression()->text(), QString("unknown"));
    QVERIFY(!window.find<QCheckBox>("chkSplitToVolumes")->isEnabled());
    QVERIFY(window.find<QCheckBox>("chkSplitToVolumes")->isChecked());
    QVERIFY(!window.find<QCheckBox>("sfxChkBox")->isEnabled());
    QVERIFY(window.find<QLabel>("everyItemNewArchiveLabel")->isVisibleTo(window.options()));
    QVERIFY(window.dialogs.savePanels.isEmpty());
  }

  void formatButtonsSetTheControls() {
    Window window;
    window.engine.ui().mainWindow->show();
    window.options()->centreAndShow();
    window.options()->selectionForCompression()->setText(QDir::homePath() + "/Desktop/untitled");
    window.find<QToolButton>("btnZipCompression")->click();
    QVERIFY(!window.find<QWidget>("sfxObjectDrawer")->isVisible());
    screenshot(window.options(), "create-window-zip.png");

    window.find<QCheckBox>("sfxChkBox")->click();
    QVERIFY(window.find<QWidget>("sfxObjectDrawer")->isVisible());
    QVERIFY(window.find<QWidget>("noteDrawer")->isVisible());
    screenshot(window.options(), "create-window-zip-sfx.png");
    window.find<QToolButton>("btn7zCompression")->click();
    QVERIFY(window.find<QWidget>("sfxObjectDrawer")->isVisible());

    window.find<QToolButton>("btnGzipCompression")->click();
    QVERIFY(!window.find<QWidget>("sfxObjectDrawer")->isVisible());
    QVERIFY(!window.find<QCheckBox>("sfxChkBox")->isChecked());
    screenshot(window.options(), "create-window-gzip.png");

    window.find<QToolButton>("btnTarCompression")->click();
    QCOMPARE(JobSettings::shared().compressionMethod, QString("-ttar"));
    QVERIFY(!window.find<QCheckBox>("chkPasswordProtected")->isEnabled());
    QVERIFY(!window.find<QCheckBox>("chkSplitToVolumes")->isEnabled());
    screenshot(window.options(), "create-window-tar.png");

    window.find<QToolButton>("btnRarCompression")->click();
    QCOMPARE(JobSettings::shared().compressionMethod, QString("rar"));
    QCOMPARE(window.find<QLineEdit>("textfieldSplitToVolumesSize")->text(), QString("2048"));
    QCOMPARE(window.find<QComboBox>("btnSplitToVolumesSizeType")->currentIndex(), 0);
    QVERIFY(!window.find<QComboBox>("btnSplitToVolumesSizeType")->isEnabled());
    QVERIFY(window.find<QWidget>("noteDrawer")->isVisible());
    window.find<QCheckBox>("chkSplitToVolumes")->click();
    QVERIFY(!window.find<QComboBox>("btnSplitToVolumesSizeType")->isEnabled());
    QVERIFY(window.find<QLineEdit>("textfieldSplitToVolumesSize")->isEnabled());
    window.find<QPlainTextEdit>("sfxNotesField")->setPlainText("Read me before you extract.");
    screenshot(window.options(), "create-window-rar.png");
  }

  void unitItemsSetTheUnitLetter_data() {
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("letter");
    QTest::newRow("KB") << 0 << "k";
    QTest::newRow("MB") << 1 << "m";
    QTest::newRow("GB") << 2 << "g";
  }
  void unitItemsSetTheUnitLetter() {
    QFETCH(int, item);
    QFETCH(QString, letter);
    Window window;
    window.find<QToolButton>("btnZipCompression")->click();
    window.find<QCheckBox>("chkSplitToVolumes")->click();
    auto* unit = window.find<QComboBox>("btnSplitToVolumesSizeType");
    QVERIFY(unit->isEnabled());
    const QString before = JobSettings::shared().splitVolumesSizeType;
    JobSettings::shared().splitVolumesSizeType = "x";
    unit->setCurrentIndex(item);
    QCOMPARE(JobSettings::shared().splitVolumesSizeType, QString("x"));
    emit unit->activated(item);
    const QString chosen = JobSettings::shared().splitVolumesSizeType;
    JobSettings::shared().splitVolumesSizeType = before;
    QCOMPARE(chosen, letter);
  }

  void theSliderSetsEveryLevel() {
    Window window;
    auto* slider = window.find<QSlider>("compressionLevelSliderControl");
    slider->setValue(5);
    slider->setValue(0);
    QCOMPARE(window.find<QLabel>("compressionLevelInfo")->text(),
             QString("Level: Store only | Speed: Fastest"));
    QCOMPARE(JobSettings::shared().zipCompressionLevel, QString("-mx0"));
    QCOMPARE(JobSettings::shared().lhaCompressionLevel, QString("-o5"));
  }

  void higherStoresUltra() {
    Window window;
    window.options()->findChild<QAction*>("btnDefaultCompressionLevelHigherPref")->trigger();
    QCOMPARE(PreferencesStore::text("DefaultCompressionLevel"), QString("Ultra"));
  }

  void compressMakesTheArchiveOnAWorker() {
    Window window;
    window.engine.ui().mainWindow->show();
    const QString file = fileNamed("report final.txt", "the report\n");
    window.engine.createTab()->list()->addFiles({file});
    window.dialogs.saveAnswers << work_.filePath("made");
    window.creation()->btnCreateAction();
    window.find<QToolButton>("btn7zCompression")->click();
    QSignalSpy finished(window.creation(), &ArchiveCreation::jobFinished);
    window.options()->findChild<QPushButton*>("btnCompress")->click();
    QVERIFY(finished.wait(60000));
    QVERIFY(QFile::exists(work_.filePath("made.7z")));
    OperationStatus* status = window.engine.ui().operationStatus;
    QCOMPARE(status->text(), "Archive created: " + work_.filePath("made.7z"));
    status->showFolderButton()->click();
    QCOMPARE(window.desktop.shownFolders, QStringList{work_.path()});
    QVERIFY(!window.options()->isVisible());
    QVERIFY(!window.creation()->compressingWindow()->isVisible());
    QVERIFY(!window.engine.ui().compressionSpin->isVisible());
    // The job leaves its volume switch, with no size, for the next run.
    QCOMPARE(JobSettings::shared().splitVolumesSize, QString("-vm"));
  }

  void aPasswordMismatchLeavesTheWindowUp() {
    Window window;
    window.engine.ui().mainWindow->show();
    window.engine.createTab()->list()->addFiles({fileNamed("b.txt", "b")});
    window.dialogs.saveAnswers << work_.filePath("never");
    window.creation()->btnCreateAction();
    window.find<QCheckBox>("chkPasswordProtected")->click();
    window.find<QLineEdit>("textFieldPassword")->setText("one");
    window.find<QLineEdit>("textFieldPasswordConfirm")->setText("two");
    QSignalSpy finished(window.creation(), &ArchiveCreation::jobFinished);
    window.options()->findChild<QPushButton*>("btnCompress")->click();
    QVERIFY(finished.wait(10000));
    QVERIFY(window.options()->isVisible());
    QVERIFY(window.dialogs.alerts.isEmpty());
    QVERIFY(!QFile::exists(work_.filePath("never.zip")));
  }

  void cancelEndsTheRunningToolAndTheRows() {
    QTemporaryDir tools;
    const QString log = tools.filePath("runs.log");
    QFile slow(tools.filePath("7za"));
    slow.open(QIODevice::WriteOnly);
    slow.write(("#!/bin/sh\necho run >> '" + log + "'\nexec sleep 30\n").toUtf8());
    slow.close();
    slow.setPermissions(slow.permissions() | QFile::ExeOwner);
    const QByteArray realTools = qgetenv("QUILLET_TOOLS_DIR");
    qputenv("QUILLET_TOOLS_DIR", tools.path().toUtf8());

    Window window;
    window.engine.ui().mainWindow->show();
    window.engine.createTab()->list()->addFiles({fileNamed("c.txt", "c"), fileNamed("d.txt", "d")});
    window.dialogs.saveAnswers << work_.filePath("cancelled");
    window.creation()->btnCreateAction();
    QSignalSpy finished(window.creation(), &ArchiveCreation::jobFinished);
    window.options()->findChild<QPushButton*>("btnCompress")->click();
    QTRY_VERIFY(QFile::exists(log));
    QTRY_VERIFY(window.creation()->compressingWindow()->isVisible());
    QVERIFY(&window.creation()->compressionProcess() == &window.jobRunner);
    screenshot(window.creation()->compressingWindow(), "compressing-window.png");
    window.creation()
        ->compressingWindow()
        ->findChild<QPushButton*>("btnCancelCompressing")
        ->click();
    QVERIFY(finished.wait(10000));
    qputenv("QUILLET_TOOLS_DIR", realTools);
    QFile runs(log);
    runs.open(QIODevice::ReadOnly);
    QCOMPARE(runs.readAll(), QByteArray("run\n"));
    QVERIFY(!window.creation()->compressionThread());
    QVERIFY(window.engine.ui().operationStatus->text().isEmpty());
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  ArchiveCreationTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "tst_archive_creation.moc"
