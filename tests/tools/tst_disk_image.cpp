#include "FakeDialogs.h"
#include "support/Screenshot.h"
#include "support/TestArchives.h"
#include "tools/DMGUtility.h"
#include "tools/DiskImageArguments.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProcess>
#include <QProgressBar>
#include <QPushButton>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

using TestArchives::Tree;
using TestArchives::treeUnder;
using TestArchives::writeFile;

namespace {

struct Run {
  int exitCode;
  QByteArray output;
  QByteArray errors;
};

Run run(const QString& program, const QStringList& arguments, const QByteArray& input = {}) {
  QProcess process;
  process.start(program, arguments);
  process.write(input);
  process.closeWriteChannel();
  process.waitForFinished(120000);
  return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

// The files of an image as 7-Zip unpacks it, without the file system's own.
Tree filesOfImage(const QString& image, const QString& into) {
  TestArchives::runIn(QDir::rootPath(), "7z", {"x", "-y", "-o" + into, image});
  QDir(into + "/lost+found").removeRecursively();
  QDir(into + "/[SYS]").removeRecursively();
  return treeUnder(into);
}

}  // namespace

class DiskImageTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  FakeDialogs dialogs_;
  std::unique_ptr<QWidget> page_;
  std::unique_ptr<DMGUtility> utility_;

  QString source() const { return work_.path() + "/Ordner ü"; }
  QString images() const { return work_.path() + "/images"; }

  void fill(const QString& name, const QString& size = "0", int unit = 1) {
    utility_->sourcePath->setText(source());
    utility_->destinationPath->setText(images());
    utility_->imageName->setText(name);
    utility_->targetSizeTextField->setText(size);
    utility_->targetSizeTypePopUp->setCurrentIndex(unit);
  }

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(source(), "Projekt");
    writeFile(source() + "/日本/メモ.txt", QByteArray(300000, 'm'));
    QDir().mkpath(images());
  }

  void init() {
    dialogs_ = FakeDialogs();
    page_ = std::make_unique<QWidget>();
    utility_ = std::make_unique<DMGUtility>(dialogs_, page_.get());
  }

  void arguments_data() {
    QTest::addColumn<bool>("encrypted");
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("algorithm");
    QTest::addColumn<QStringList>("expected");
    const QStringList head = {"create", "-fs", "HFS+"};
    const QStringList tail = {"-srcfolder", "/s", "/d/i.dmg"};
    QTest::newRow("encrypted, sized")
        << true << "20" << 0
        << head + QStringList{"-size", "20m", "-encryption", "AES-128", "-stdinpass"} + tail;
    QTest::newRow("encrypted") << true << "0" << 1
                               << head + QStringList{"-encryption", "AES-256", "-stdinpass"} + tail;
    QTest::newRow("sized") << false << "20" << 1 << head + QStringList{"-size", "20m"} + tail;
    QTest::newRow("plain") << false << "0" << 5 << head + tail;
  }
  void arguments() {
    QFETCH(bool, encrypted);
    QFETCH(QString, size);
    QFETCH(int, algorithm);
    QFETCH(QStringList, expected);
    QCOMPARE(DiskImageArguments::arguments({size, 1, encrypted, algorithm, "/s", "/d/i.dmg"}),
             expected);
    QCOMPARE(DiskImageArguments::size("3", 0), "3k");
    QCOMPARE(DiskImageArguments::size("3", 2), "3g");
    QCOMPARE(DiskImageArguments::algorithm(2), "AES-256");
  }

  void makesImages_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("size");
    QTest::addColumn<int>("unit");
    QTest::addColumn<int>("algorithm");     // -1: not encrypted
    QTest::addColumn<qint64>("imageSize");  // 0: any
    QTest::newRow("plain, just large enough") << "plain"
                                              << "0" << 1 << -1 << qint64(0);
    QTest::newRow("plain, 20 MB") << "sized"
                                  << "20" << 1 << -1 << qint64(20 << 20);
    QTest::newRow("plain, 9000 KB") << "kilo"
                                    << "9000" << 0 << -1 << qint64(9000 << 10);
    QTest::newRow("AES-128") << "secret 128"
                             << "0" << 1 << 0 << qint64(0);
    QTest::newRow("AES-256, 12 MB") << "secret 256"
                                    << "12" << 1 << 1 << qint64(0);
  }
  void makesImages() {
    QFETCH(QString, name);
    QFETCH(QString, size);
    QFETCH(int, unit);
    QFETCH(int, algorithm);
    QFETCH(qint64, imageSize);
    const QString password = "pass wört";
    fill(name, size, unit);
    if (algorithm >= 0) {
      utility_->chkEncryptImageOutlet->setChecked(true);
      utility_->encryptionAlgoPopUp->setCurrentIndex(algorithm);
      utility_->encryptionPassTextField->setText(password);
      utility_->encryptionPassRepeatTextField->setText(password);
    }
    utility_->createDMGBtnOutlet->click();
    QVERIFY(dialogs_.alerts.isEmpty());
    QVERIFY(utility_->loadingProgressBar->isHidden());
    QVERIFY(utility_->loadingLabel->isHidden());
    QCOMPARE(utility_->loadingLabel->text(), "DMG image creation done");

    const QString image = images() + u'/' + name + ".dmg";
    QVERIFY(QFileInfo(image).isFile());
    if (imageSize)
      QCOMPARE(QFileInfo(image).size(), imageSize);
    QTemporaryDir out;
    if (algorithm < 0) {
      QCOMPARE(filesOfImage(image, out.path() + "/files"), treeUnder(source()));
      // What the timer shows: the image's allocated kilobytes, up to the folder's.
      utility_->loadingProgressBar->setRange(0, 1 << 30);
      utility_->loadingProgress();
      QVERIFY(utility_->loadingProgressBar->value() > 0);
      return;
    }
    // Nothing opens without the password, and gpg names the chosen cipher.
    const QStringList decrypt = {"--homedir", out.path(),        "--batch", "--pinentry-mode",
                                 "loopback",  "--passphrase-fd", "0",       "--decrypt",
                                 "--output"};
    QVERIFY(run("gpg", decrypt + QStringList{out.path() + "/wrong.img", image}, "guess").exitCode !=
            0);
    QVERIFY(!QFileInfo::exists(out.path() + "/wrong.img"));
    const Run opened =
        run("gpg", decrypt + QStringList{out.path() + "/image.img", image}, password.toUtf8());
    QCOMPARE(opened.exitCode, 0);
    QVERIFY(opened.errors.contains(algorithm == 0 ? "AES.CFB" : "AES256.CFB"));
    QCOMPARE(filesOfImage(out.path() + "/image.img", out.path() + "/files"), treeUnder(source()));
    run("gpgconf", {"--homedir", out.path(), "--kill", "gpg-agent"});
  }

  // Enter in a field makes the image; the status bar says how it went.
  void statusBarSaysHowItWent_data() {
    QTest::addColumn<QString>("size");
    QTest::addColumn<QString>("status");
    QTest::newRow("fits") << "0"
                          << "Disk image made: %1";
    QTest::newRow("too small") << "100"
                               << "The disk image was not made: ";
  }
  void statusBarSaysHowItWent() {
    QFETCH(QString, size);
    QFETCH(QString, status);
    QMainWindow window;
    utility_.reset();
    page_ = std::make_unique<QWidget>();
    utility_ = std::make_unique<DMGUtility>(dialogs_, page_.get(), &window);
    fill("made " + size, size, 0);
    QSignalSpy finished(utility_.get(), &DMGUtility::creationFinished);
    QTest::keyClick(utility_->imageName, Qt::Key_Return);
    QVERIFY(finished.wait(60000));
    const QString image = images() + "/made " + size + ".dmg";
    QCOMPARE(QFileInfo::exists(image), size == "0");
    QVERIFY2(window.statusBar()->currentMessage().startsWith(status.arg(image)),
             qPrintable(window.statusBar()->currentMessage()));
  }

  void cancelLeavesNoImage() {
    QTemporaryDir large;
    QList<quint32> noise(40 * 1024 * 1024);
    QRandomGenerator::global()->fillRange(noise.data(), noise.size());
    writeFile(large.path() + "/noise.bin",
              QByteArray(reinterpret_cast<const char*>(noise.constData()), noise.size() * 4));
    QMainWindow window;
    utility_.reset();
    page_ = std::make_unique<QWidget>();
    utility_ = std::make_unique<DMGUtility>(dialogs_, page_.get(), &window);
    fill("stopped");
    utility_->sourcePath->setText(large.path());
    QTimer probe;
    connect(&probe, &QTimer::timeout, this, [&] {
      if (QFileInfo::exists(images() + "/stopped.dmg") && utility_->cancelDMGBtn->isVisible())
        utility_->cancelDMGBtn->click();
    });
    probe.start(5);
    page_->show();
    utility_->createDMGBtn();
    QVERIFY(!QFileInfo::exists(images() + "/stopped.dmg"));
    QCOMPARE(window.statusBar()->currentMessage(),
             "The disk image was stopped; no image was made.");
    QVERIFY(utility_->createDMGBtnOutlet->isEnabled());
  }

  void checks_data() {
    QTest::addColumn<QString>("emptyField");
    QTest::addColumn<QString>("message");
    QTest::newRow("source") << "sourcePath"
                            << "Please choose source path.";
    QTest::newRow("destination") << "destinationPath"
                                 << "Please choose destination path.";
    QTest::newRow("name") << "imageName"
                          << "Please enter image name.";
  }
  void checks() {
    QFETCH(QString, emptyField);
    QFETCH(QString, message);
    fill("never");
    page_->findChild<QLineEdit*>(emptyField)->clear();
    utility_->createDMGBtn();
    QCOMPARE(dialogs_.alerts.size(), 1);
    QCOMPARE(dialogs_.alerts[0].title, "Error");
    QCOMPARE(dialogs_.alerts[0].message, message);
    QVERIFY(utility_->loadingLabel->isHidden());
  }

  void mismatchedPasswordsStop() {
    fill("mismatch");
    // Hidden fields count too, with encryption off.
    utility_->encryptionPassTextField->setText("one");
    utility_->encryptionPassRepeatTextField->setText("two");
    utility_->createDMGBtn();
    QCOMPARE(dialogs_.alerts.size(), 1);
    QCOMPARE(dialogs_.alerts[0].title, "Wrong passwords doesn't match!");
    QCOMPARE(dialogs_.alerts[0].message, "Please reenter your passwords");
    QVERIFY(!QFileInfo::exists(images() + "/mismatch.dmg"));
    QVERIFY(!utility_->loadingProgressBar->isHidden());
    QCOMPARE(utility_->loadingLabel->text(), "Work in progress, please wait...");
    page_->resize(820, 560);
    page_->show();
    saveScreenshot(page_.get(), "disk_image_tab_working");
  }

  void existingImageIsRefused() {
    writeFile(images() + "/taken.dmg", "mine");
    fill("taken");
    utility_->createDMGBtn();
    QCOMPARE(dialogs_.alerts.size(), 1);
    QCOMPARE(dialogs_.alerts[0].title, "Image exists");
    QCOMPARE(dialogs_.alerts[0].message, "Image with this name already exists.");
    QCOMPARE(TestArchives::contentOf(images() + "/taken.dmg"), "mine");
    QVERIFY(utility_->loadingLabel->isHidden());
    QVERIFY(utility_->loadingProgressBar->isHidden());
  }

  void screenshotOfTab() {
    fill("Holiday photos", "0");
    utility_->chkEncryptImageOutlet->setChecked(true);
    utility_->encryptionPassTextField->setText("secret");
    utility_->encryptionPassRepeatTextField->setText("secret");
    page_->resize(820, 560);
    page_->show();
    saveScreenshot(page_.get(), "disk_image_tab");
    utility_->chkEncryptImageOutlet->setChecked(false);
    QVERIFY(utility_->encryptionPassTextField->isHidden());
  }
};

QTEST_MAIN(DiskImageTest)
#include "tst_disk_image.moc"
