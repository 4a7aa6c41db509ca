#include "create/CompressionJob.h"
#include "create/CreateOptions.h"
#include "create/JobSettings.h"
#include "platform/PreferencesStore.h"

#include <QTest>

using Format = CreateOptions::Format;

class JobSettingsTest : public QObject {
  Q_OBJECT

 private slots:
  // rand() is unseeded, so a fresh process always draws the same suffix;
  // this must be the first draw of the test process.
  void aFreshProcessDrawsTheSameSuffix() {
    QCOMPARE(CompressionJob::genRandStringLength(4), QString("PKdh"));
    QCOMPARE(CompressionJob::genRandStringLength(0), QString());
    QCOMPARE(CompressionJob::genRandStringLength(-3), QString());
  }

  void initReadsTheDefaultLevel_data() {
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QStringList>("switches");
    QTest::newRow("absent") << QString() << QStringList{"-mx3", "-m2", "-m2", "-o5"};
    QTest::newRow("unknown") << "Huge" << QStringList{"-mx3", "-m2", "-m2", "-o5"};
    QTest::newRow("lower case is unknown") << "ultra" << QStringList{"-mx3", "-m2", "-m2", "-o5"};
    QTest::newRow("Lowest") << "Lowest" << QStringList{"-mx1", "-m1", "-m1", "-o5"};
    QTest::newRow("Normal") << "Normal" << QStringList{"-mx5", "-m3", "-m3", "-o6"};
    QTest::newRow("High") << "High" << QStringList{"-mx7", "-m4", "-m4", "-o6"};
    QTest::newRow("Ultra: arj reuses high") << "Ultra" << QStringList{"-mx9", "-m5", "-m4", "-o7"};
  }
  void initReadsTheDefaultLevel() {
    QFETCH(QString, stored);
    QFETCH(QStringList, switches);
    PreferencesStore::setText("DefaultCompressionLevel", stored);
    JobSettings settings;
    settings.compressionMethod = "rar";
    settings.splitVolumesSize = "-v10m";
    settings.init();
    QCOMPARE((QStringList{settings.zipCompressionLevel, settings.rarCompressionLevel,
                          settings.arjCompressionLevel, settings.lhaCompressionLevel}),
             switches);
    QCOMPARE(settings.compressionMethod, QString("-tzip"));
    QCOMPARE(settings.splitVolumesSize, QString("-v"));
    QCOMPARE(settings.splitVolumesSizeType, QString("m"));
    QCOMPARE(settings.archivePass, QString("-p{}"));
  }

  void sliderPositions() {
    QCOMPARE(JobSettings::levelAt(0)->sevenZip, QString("-mx0"));
    QCOMPARE(JobSettings::levelAt(0)->lha, QString("-o5"));
    QCOMPARE(JobSettings::levelAt(0)->info, QString("Level: Store only | Speed: Fastest"));
    QCOMPARE(JobSettings::levelAt(5)->info, QString("Level: Ultra | Speed: Slowest"));
    QVERIFY(!JobSettings::levelAt(6));
    QVERIFY(!JobSettings::levelAt(-1));
  }

  void formatsEnableWhatTheyAllow_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("method");
    QTest::addColumn<bool>("sfxEnabled");
    QTest::addColumn<bool>("splitEnabled");
    QTest::addColumn<bool>("passwordEnabled");
    QTest::addColumn<bool>("notesOpen");
    QTest::newRow("zip") << int(Format::Zip) << "-tzip" << true << true << true << false;
    QTest::newRow("7z") << int(Format::SevenZip) << "-t7z" << true << true << true << false;
    QTest::newRow("tar") << int(Format::Tar) << "-ttar" << true << false << false << false;
    QTest::newRow("gzip") << int(Format::Gzip) << "-tgzip" << false << false << false << false;
    QTest::newRow("bzip2") << int(Format::Bzip2) << "-tbzip2" << false << false << false << false;
    QTest::newRow("arj") << int(Format::Arj) << "arj" << false << false << false << false;
    QTest::newRow("lha") << int(Format::Lha) << "lha" << false << false << false << false;
    QTest::newRow("rar") << int(Format::Rar) << "rar" << false << true << true << true;
  }
  void formatsEnableWhatTheyAllow() {
    QFETCH(int, format);
    QFETCH(QString, method);
    QFETCH(bool, sfxEnabled);
    QFETCH(bool, splitEnabled);
    QFETCH(bool, passwordEnabled);
    QFETCH(bool, notesOpen);
    CreateOptions options;
    options.sfxEnabled = false;
    options.splitEnabled = false;
    options.passwordToggled(true);
    options.passwordText = options.confirmText = "secret";
    QCOMPARE(options.chooseFormat(static_cast<Format>(format)), method);
    QCOMPARE(options.sfxEnabled, sfxEnabled);
    QCOMPARE(options.splitEnabled, splitEnabled);
    QCOMPARE(options.passwordEnabled, passwordEnabled);
    QVERIFY(!options.passwordChecked);
    QCOMPARE(options.notesPanelOpen, notesOpen);
    // Only the formats without passwords empty the confirmation.
    QCOMPARE(options.confirmText.isEmpty(), !passwordEnabled);
    QCOMPARE(options.passwordText, QString("secret"));
  }

  void tarKeepsTheSelfExtractionChoice() {
    CreateOptions options;
    options.sfxToggled(true);
    options.chooseFormat(Format::Tar);
    QVERIFY(options.sfxChecked);
    options.chooseFormat(Format::Gzip);
    QVERIFY(!options.sfxChecked);
    QVERIFY(!options.sfxEnabled);
  }

  void onlyZip7zAndTarLeaveTheSfxDrawerOpen_data() {
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("open");
    QTest::newRow("zip") << int(Format::Zip) << true;
    QTest::newRow("7z") << int(Format::SevenZip) << true;
    QTest::newRow("tar") << int(Format::Tar) << true;
    QTest::newRow("gzip") << int(Format::Gzip) << false;
    QTest::newRow("bzip2") << int(Format::Bzip2) << false;
    QTest::newRow("arj") << int(Format::Arj) << false;
    QTest::newRow("lha") << int(Format::Lha) << false;
    QTest::newRow("rar") << int(Format::Rar) << false;
  }
  void onlyZip7zAndTarLeaveTheSfxDrawerOpen() {
    QFETCH(int, format);
    QFETCH(bool, open);
    CreateOptions options;
    QVERIFY(!options.sfxDrawerOpen);
    options.sfxToggled(true);
    QVERIFY(options.sfxDrawerOpen);
    options.chooseFormat(static_cast<Format>(format));
    QCOMPARE(options.sfxDrawerOpen, open);
    // No format button opens it.
    options.sfxToggled(false);
    options.chooseFormat(static_cast<Format>(format));
    QVERIFY(!options.sfxDrawerOpen);
  }

  void rarCountsVolumesInKilobytes() {
    CreateOptions options;
    options.chooseFormat(Format::Rar);
    QCOMPARE(options.splitSizeText, QString("2048"));
    QCOMPARE(options.unitIndex, int(CreateOptions::Kilobytes));
    QVERIFY(!options.unitEnabled);
    options.splitToggled(true, JobSettings::kRar);
    QVERIFY(!options.unitEnabled);
    QVERIFY(options.splitSizeEnabled);
  }

  void everyItemKeepsSplitAndSfxOff() {
    CreateOptions options;
    options.sfxEnabled = options.splitEnabled = false;
    options.everyItemToggled(true);
    QVERIFY(options.everyItemLabelVisible);
    options.chooseFormat(Format::Zip);
    QVERIFY(!options.splitEnabled);
    QVERIFY(!options.sfxEnabled);
    options.chooseFormat(Format::Rar);
    QVERIFY(!options.splitEnabled);
  }

  void sfxTurnsSplitOffAndBackOnDisabled() {
    CreateOptions options;
    options.splitToggled(true, JobSettings::kZip);
    QVERIFY(options.unitEnabled);
    options.sfxToggled(true);
    QVERIFY(!options.splitChecked);
    QVERIFY(!options.splitEnabled);
    QVERIFY(options.notesPanelOpen);
    QVERIFY(options.sfxDrawerOpen);
    options.sfxToggled(false);
    QVERIFY(options.splitEnabled);
    QVERIFY(!options.splitChecked);
    QVERIFY(!options.notesPanelOpen);
    QVERIFY(!options.sfxDrawerOpen);
  }

  void uploadIsOffAfterSplitSfxOrEveryItem_data() {
    QTest::addColumn<int>("control");
    QTest::newRow("split") << 0;
    QTest::newRow("sfx") << 1;
    QTest::newRow("every item") << 2;
  }
  void uploadIsOffAfterSplitSfxOrEveryItem() {
    QFETCH(int, control);
    CreateOptions options;
    options.uploadChecked = true;
    if (control == 0)
      options.splitToggled(true, JobSettings::kZip);
    else if (control == 1)
      options.sfxToggled(true);
    else
      options.everyItemToggled(true);
    QVERIFY(!options.uploadChecked);
    QVERIFY(!options.uploadEnabled);
  }

  void passwordCheckboxEmptiesTheFieldsWhenTurnedOff() {
    CreateOptions options;
    options.passwordToggled(true);
    QVERIFY(options.passwordFieldsEnabled);
    options.passwordText = options.confirmText = "x";
    options.passwordToggled(false);
    QVERIFY(options.passwordText.isEmpty());
    QVERIFY(options.confirmText.isEmpty());
    QVERIFY(!options.passwordFieldsEnabled);
  }

  void extensions_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("extension");
    QTest::newRow("zip") << "-tzip"
                         << ".zip";
    QTest::newRow("gzip is a tar first") << "-tgzip"
                                         << ".tar";
    QTest::newRow("bzip2 is a tar first") << "-tbzip2"
                                          << ".tar";
    QTest::newRow("rar") << "rar"
                         << ".rar";
    QTest::newRow("lha") << "lha"
                         << ".lha";
  }
  void extensions() {
    QFETCH(QString, method);
    QFETCH(QString, extension);
    QCOMPARE(JobSettings::extensionFor(method), extension);
  }
};

QTEST_GUILESS_MAIN(JobSettingsTest)
#include "tst_job_settings.moc"
