#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "engine/OperationStatus.h"
#include "platform/PreferenceKeys.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/Screenshot.h"
#include "support/TestArchives.h"
#include "tools/BackupNames.h"
#include "tools/BackupParts.h"
#include "tools/BackupSizeText.h"
#include "tools/backupEngine.h"

#include <QApplication>
#include <QCheckBox>
#include <QDir>
#include <QFrame>
#include <QLabel>
#include <QMainWindow>
#include <QProcess>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStatusBar>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using TestArchives::contentOf;
using TestArchives::treeUnder;
using TestArchives::writeFile;

namespace {

QString restoreBundle() {
  return QDir(qEnvironmentVariable("QUILLET_TOOLS_DIR")).absoluteFilePath("../backupmodule.app");
}

// The restorer as a script would run it: no display, another home folder.
QString restoreInto(const QString& application, const QString& home) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    environment.remove(name);
  environment.insert("HOME", home);
  process.setProcessEnvironment(environment);
  process.setStandardInputFile(QProcess::nullDevice());
  process.start(application + "/Contents/MacOS/backupmodule", {"--yes"});
  process.waitForFinished(120000);
  if (process.exitCode() != 0)
    qWarning("%s", process.readAllStandardError().constData());
  return QString::fromUtf8(process.readAllStandardOutput());
}

}  // namespace

class BackupTest : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<QTemporaryDir> home_;
  ProcessToolRunner runner_;
  FakeDialogs dialogs_;
  FakeDesktop desktop_;
  std::unique_ptr<QWidget> page_;
  std::unique_ptr<backupEngine> engine_;

  QString backups() const { return home_->path() + "/Quillet backups"; }
  QString todays(const QString& extension) const {
    const QString archive = BackupNames::archiveName(QDate::currentDate());
    return backups() + u'/' + (extension == "7z" ? archive : BackupNames::applicationName(archive));
  }

  void runBackup() {
    QSignalSpy finished(engine_.get(), &backupEngine::backupFinished);
    engine_->ui().btnBackupNow->click();
    // A refused start ends at once, within the click.
    QVERIFY(!finished.isEmpty() || finished.wait(120000));
  }

 private slots:
  void init() {
    home_ = std::make_unique<QTemporaryDir>();
    qputenv("HOME", home_->path().toUtf8());
    PreferencesStore::remove(PreferenceKeys::kDefaultBackupDirectory);
    const QString home = home_->path();
    writeFile(home + "/.config/editor/settings.ini", "[General]\nfont=Mono\n");
    writeFile(home + "/.config/empty-app/.keep", "");
    TestArchives::writeSampleTree(home + "/Documents", "Projects");
    writeFile(home + "/Documents/Résumé – 2011.txt", "curriculum\n");
    writeFile(home + "/Documents/日本/メモ.txt", QByteArray(70000, 'x'));
    writeFile(home + "/.thunderbird/default/Mail/Inbox", "From: a@b\n\nhello\n");
    dialogs_ = FakeDialogs();
    desktop_ = FakeDesktop();
    page_ = std::make_unique<QWidget>();
    engine_ = std::make_unique<backupEngine>(runner_, dialogs_, desktop_, page_.get(), nullptr);
    engine_->setRestoreBundle(restoreBundle());
  }

  void cleanup() {
    engine_.reset();
    page_.reset();
  }

  void names_data() {
    QTest::addColumn<int>("month");
    QTest::addColumn<QString>("text");
    QTest::newRow("first") << 1 << "Jan";
    QTest::newRow("eleventh") << 11 << "Nov";
    QTest::newRow("twelfth") << 12 << "Dec";
    QTest::newRow("zero") << 0 << "Dec";
    QTest::newRow("thirteen") << 13 << "Dec";
  }
  void names() {
    QFETCH(int, month);
    QFETCH(QString, text);
    QCOMPARE(BackupNames::convertIntMonthToStr(month), text);
    QCOMPARE(BackupNames::archiveName(QDate(2011, 3, 5)), "5.Mar.2011-Quillet-backup.7z");
    QCOMPARE(BackupNames::applicationName("5.Mar.2011-Quillet-backup.7z"),
             "5.Mar.2011-Quillet-backup.app");
  }

  void sizeTexts_data() {
    QTest::addColumn<QByteArray>("du");
    QTest::addColumn<QString>("text");
    // Below 1 MiB the whole kilobytes reach "%.2f" as an integer.
    QTest::newRow("kilobytes") << QByteArray("600\t/home/a b") << "0.00 KB";
    QTest::newRow("one mebibyte") << QByteArray("1024\t/x") << "";
    QTest::newRow("megabytes") << QByteArray("5120\t/x") << "5.00 MB";
    QTest::newRow("one gibibyte") << QByteArray("1048576\t/x") << "";
    QTest::newRow("gigabytes") << QByteArray("1572864\t/x") << "1.50 GB";
    QTest::newRow("wraps past 2 GiB") << QByteArray("3145728\t/x") << "0.00 KB";
    QTest::newRow("no output") << QByteArray() << "0.00 KB";
  }
  void sizeTexts() {
    QFETCH(QByteArray, du);
    QFETCH(QString, text);
    QCOMPARE(BackupSizeText::folder(BackupSizeText::bytesFromDu(du)), text);
  }

  void totalIgnoresUnits() {
    const float sum =
        BackupSizeText::leadingNumber("500.00 MB") + BackupSizeText::leadingNumber("600.00 KB");
    QCOMPARE(BackupSizeText::total(sum), QString("1.07 GB"));
    QCOMPARE(BackupSizeText::total(12.5f), QString("12.50 MB"));
    QVERIFY(!BackupSizeText::total(1024.0f));
  }

  void measuresAndShowsTab() {
    writeFile(home_->path() + "/Documents/big.bin", QByteArray(5 * 1024 * 1024, 'b'));
    engine_->ui().chkEmail->setChecked(false);
    engine_->btnGetSizes();
    QCOMPARE(engine_->ui().backUpAppPrefsSize->text(), "0.00 KB");
    QVERIFY(engine_->ui().backUpDocsSize->text().endsWith(" MB"));
    QCOMPARE(engine_->ui().totalBackUpSize->text(),
             QString::asprintf(
                 "%.2f MB", BackupSizeText::leadingNumber(engine_->ui().backUpDocsSize->text())));
    QVERIFY(engine_->ui().currentUser1->text().size() > 0);
    engine_->ui().chkCompressBackup->setChecked(false);
    QVERIFY(engine_->ui().chkMaximumCompression->isHidden());
    engine_->ui().chkCompressBackup->setChecked(true);
    page_->resize(820, 560);
    page_->show();
    saveScreenshot(page_.get(), "backup_tab");
  }

  void backupRestoresIntoAnotherHome() {
    bool shot = false;
    QTimer probe;
    connect(&probe, &QTimer::timeout, this, [&] {
      if (!shot && engine_->ui().backUpWindow->isVisible()) {
        shot = true;
        saveScreenshot(engine_->ui().backUpWindow, "backup_status_window");
      }
    });
    probe.start(20);
    runBackup();
    QVERIFY(shot);
    QVERIFY(dialogs_.alerts.isEmpty());

    const QString application = todays("app");
    const QString archive = BackupNames::archiveName(QDate::currentDate());
    QVERIFY(!QFileInfo::exists(todays("7z")));
    QVERIFY(QFileInfo(application + "/Contents/MacOS/backupmodule").isExecutable());
    QVERIFY(QFileInfo(application + "/Contents/Resources/" + archive).isFile());
    const QByteArray named = contentOf(application + "/Contents/Resources/archive");
    QCOMPARE(QStringConverter::encodingForData(named).value_or(QStringConverter::Utf8),
             QStringConverter::Utf16LE);
    QStringDecoder utf16(QStringConverter::Utf16);
    QCOMPARE(QString(utf16.decode(named)), archive);
    for (QCheckBox* mark : {engine_->ui().chkAppsIndicator, engine_->ui().chkDocsIndicator,
                            engine_->ui().chkMailIndicator})
      QVERIFY(mark->isChecked());

    // A file changed after the backup is newer than its copy and stays.
    QTemporaryDir other;
    writeFile(other.path() + "/Documents/Résumé – 2011.txt", "rewritten later\n");
    const QString report = restoreInto(application, other.path());
    QVERIFY2(report.contains("Documents/Résumé – 2011.txt"), qPrintable(report));
    QCOMPARE(contentOf(other.path() + "/Documents/Résumé – 2011.txt"), "rewritten later\n");
    QFile::remove(other.path() + "/Documents/Résumé – 2011.txt");
    QFile::copy(home_->path() + "/Documents/Résumé – 2011.txt",
                other.path() + "/Documents/Résumé – 2011.txt");
    for (const char* part : {"/.config", "/Documents", "/.thunderbird"})
      QCOMPARE(treeUnder(other.path() + part), treeUnder(home_->path() + part));
    QVERIFY(QDir(other.path())
                .entryList(QDir::Hidden | QDir::AllEntries | QDir::NoDotAndDotDot)
                .filter(".backupmodule")
                .isEmpty());
  }

  void secondRunTheSameDayReplaces() {
    runBackup();
    writeFile(home_->path() + "/Documents/added later.txt", "new\n");
    engine_->ui().chkAppsPrefs->setChecked(false);
    engine_->ui().chkEmail->setChecked(false);
    runBackup();
    QCOMPARE(QDir(backups()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{QFileInfo(todays("app")).fileName()});
    const QString archive =
        todays("app") + "/Contents/Resources/" + BackupNames::archiveName(QDate::currentDate());
    const QByteArray listing = TestArchives::runIn(home_->path(), "7z", {"l", "-slt", archive});
    QVERIFY(listing.contains("Path = Documents/added later.txt"));
    QVERIFY(!listing.contains("Path = .config"));
  }

  void stopLeavesThePartialArchive() {
    QList<quint32> noise(12 * 1024 * 1024);
    QRandomGenerator::global()->fillRange(noise.data(), noise.size());
    writeFile(home_->path() + "/Documents/noise.bin",
              QByteArray(reinterpret_cast<const char*>(noise.constData()), noise.size() * 4));
    QSignalSpy finished(engine_.get(), &backupEngine::backupFinished);
    QTimer probe;
    connect(&probe, &QTimer::timeout, this, [&] {
      if (engine_->ui().chkAppsIndicator->isChecked() && QFileInfo::exists(todays("7z") + ".tmp") &&
          engine_->ui().btnStopBackupProcess->isEnabled())
        engine_->ui().btnStopBackupProcess->click();
    });
    probe.start(10);
    engine_->ui().btnBackupNow->click();
    QVERIFY(finished.wait(120000));
    QVERIFY(!QFileInfo::exists(todays("app")));
    QVERIFY(!QFileInfo::exists(todays("7z") + ".tmp"));
    const QByteArray listing =
        TestArchives::runIn(home_->path(), "7z", {"l", "-slt", todays("7z")});
    QVERIFY(listing.contains("Path = .config/editor/settings.ini"));
    QVERIFY(!listing.contains("Path = Documents"));
    QVERIFY(engine_->ui().chkDocsIndicator->isChecked());
    QVERIFY(!engine_->ui().chkMailIndicator->isChecked());
  }

  // The status bar names the backup made, or the part that failed.
  void statusBarSaysHowItWent_data() {
    QTest::addColumn<bool>("withMail");
    QTest::newRow("every part") << true;
    QTest::newRow("no mail store") << false;
  }
  void statusBarSaysHowItWent() {
    QFETCH(bool, withMail);
    if (!withMail)
      QDir(home_->path() + "/.thunderbird").removeRecursively();
    QMainWindow window;
    engine_ = std::make_unique<backupEngine>(runner_, dialogs_, desktop_, page_.get(), &window);
    engine_->setRestoreBundle(restoreBundle());
    runBackup();
    const QString mail = BackupParts::folder(BackupPart::Mail);
    QCOMPARE(window.statusBar()->currentMessage(),
             withMail ? "Backup made: " + OperationStatus::placeText(todays("app"))
                      : "Backup of Mail: " + mail + " does not exist");
  }

  void folderAlerts() {
    engine_->btnOpenBackupFolder();
    QCOMPARE(dialogs_.alerts.size(), 1);
    QCOMPARE(dialogs_.alerts[0].title, "Backup folder does not exists.");
    QCOMPARE(dialogs_.alerts[0].message,
             "You still have no backups. No backup folder is created yet.");
    QDir().mkpath(backups());
    engine_->btnOpenBackupFolder();
    QCOMPARE(desktop_.shownFolders, QStringList{backups()});

    writeFile(home_->path() + "/plain file", "x");
    PreferencesStore::setText(PreferenceKeys::kDefaultBackupDirectory, "~/plain file/backups");
    runBackup();
    QCOMPARE(dialogs_.alerts.size(), 2);
    QCOMPARE(dialogs_.alerts[1].title, "Unable to open the backup directory!");
    QCOMPARE(dialogs_.alerts[1].message,
             "Quillet can not open the backup directory, please open the preferences panel and "
             "set new one.");
    QCOMPARE(dialogs_.alerts[1].button, "OK");
  }
};

QTEST_MAIN(BackupTest)
#include "tst_backup.moc"
