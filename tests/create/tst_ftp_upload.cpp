#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "create/FtpCommands.h"
#include "create/FtpVerdict.h"
#include "create/UploadingFTP.h"
#include "create/classFTP.h"
#include "platform/PreferenceKeys.h"
#include "platform/ProcessToolRunner.h"
#include "support/LocalServer.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QRandomGenerator>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {

using namespace PreferenceKeys;
using TestArchives::contentOf;
using TestArchives::writeFile;

const QString kUser = QStringLiteral("ann");
// Quotes, a backslash, a space and a non-ASCII letter must all reach curl.
const QString kPassword = QStringLiteral("p\"a\\ss wörd");

void storeServer(const QString& address, const QString& password = kPassword) {
  PreferencesStore::setText(kFtpaddress, address);
  PreferencesStore::setText(kFtpusername, kUser);
  PreferencesStore::setText(kFtppassword, password);
}

struct Uploader {
  ProcessToolRunner runner;
  FakeDialogs dialogs;
  QMainWindow mainWindow;
  int compressionCancels = 0;
  UploadingFTP uploading{runner, dialogs, &mainWindow, [this] { ++compressionCancels; }};
};

}  // namespace

// The upload after a compression job and the FTP settings window, against
// a real FTP server on the loopback interface.
class FtpUploadTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QVERIFY(serverRoot_.isValid());
    server_ = LocalServer::ftp(serverRoot_.path(), kUser, kPassword);
    QVERIFY2(server_->listening(), "the FTP server (python3-pyftpdlib) did not start");
    address_ = QStringLiteral("ftp://127.0.0.1:%1/").arg(server_->port());
  }
  void cleanupTestCase() { server_.reset(); }

  void theArchiveArrivesByteForByte() {
    QTemporaryDir jobFolder;
    const QString name = QStringLiteral("new archive #1.zip");
    QByteArray bytes(300 * 1024, Qt::Uninitialized);
    QRandomGenerator(15).fillRange(reinterpret_cast<quint32*>(bytes.data()), bytes.size() / 4);
    writeFile(jobFolder.filePath(name), bytes);
    // Without the trailing "/", which the upload adds.
    storeServer(address_.chopped(1));

    Uploader upload;
    upload.uploading.uploadFileToFTP(name, jobFolder.path(), false);
    QCOMPARE(contentOf(serverRoot_.filePath(name)), bytes);
    QCOMPARE(upload.dialogs.alerts.size(), 1);
    QCOMPARE(upload.dialogs.alerts[0].title, QString("File uploaded successfuly!\nLink:"));
    QCOMPARE(upload.dialogs.alerts[0].message, address_ + "new%20archive%20%231.zip");
    QCOMPARE(upload.uploading.outletFTPAddress()->text(), address_);
    QCOMPARE(upload.uploading.outletUploadingFileName()->text(), name);
    QVERIFY(!upload.uploading.outletUploadingWindow()->isVisible());
    QVERIFY(!upload.mainWindow.isMinimized());
  }

  void failuresAreTold_data() {
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("message");
    QTest::newRow("wrong password")
        << ""
        << "wrong"
        << "FTP login failed"
        << "Quillet can not connect to the FTP server.\nPossible reasons:\n\n- Wrong FTP address "
           "or subdirectory (subdirectory must end with /)\n- Wrong user name or password\n- FTP "
           "server is down, please check the FTP server state";
    QTest::newRow("closed port") << QString("ftp://127.0.0.1:%1/").arg(LocalServer::closedPort())
                                 << kPassword << "Failed to connect."
                                 << "Please check your internet connection and the host address "
                                    "state.";
    QTest::newRow("unknown host")
        << "ftp://no-such-host.invalid/" << kPassword << "Could not resolve host"
        << "Quillet is unable to resoulve the host address.\nPlease double check the FTP address.";
  }
  void failuresAreTold() {
    QFETCH(QString, address);
    QFETCH(QString, password);
    QFETCH(QString, title);
    QFETCH(QString, message);
    QTemporaryDir jobFolder;
    writeFile(jobFolder.filePath("a.zip"), "zip");
    storeServer(address.isEmpty() ? address_ : address, password);
    Uploader upload;
    upload.uploading.uploadFileToFTP("a.zip", jobFolder.path(), false);
    QCOMPARE(upload.dialogs.alerts.size(), 1);
    QCOMPARE(upload.dialogs.alerts[0].title, title);
    QCOMPARE(upload.dialogs.alerts[0].message, message);
    QVERIFY(!QFile::exists(serverRoot_.filePath("a.zip")));
  }

  void noServerNoUpload() {
    PreferencesStore::setText(kFtpaddress, QString());
    FakeToolRunner runner;
    FakeDialogs dialogs;
    QMainWindow mainWindow;
    UploadingFTP uploading(runner, dialogs, &mainWindow, [] {});
    uploading.uploadFileToFTP("a.zip", QDir::tempPath(), false);
    QVERIFY(runner.runs.isEmpty());
    QCOMPARE(dialogs.alerts.size(), 1);
    QCOMPARE(dialogs.alerts[0].title, QString("FTP settings not configured."));
    QCOMPARE(dialogs.alerts[0].message,
             QString("Please configure your FTP server settings first!"));
  }

  // The password goes to curl on standard input, never on its command line.
  void thePasswordStaysOffTheCommandLine() {
    storeServer("ftp://h/in");
    FakeToolRunner runner;
    FakeDialogs dialogs;
    QMainWindow mainWindow;
    UploadingFTP uploading(runner, dialogs, &mainWindow, [] {});
    uploading.uploadFileToFTP("a.zip", "/job/folder", false);
    QCOMPARE(runner.runs.size(), 1);
    QCOMPARE(runner.runs[0].program, QString("/usr/bin/curl"));
    QCOMPARE(runner.runs[0].arguments, QStringList({"-K", "-", "-T", "a.zip", "ftp://h/in/a.zip"}));
    QCOMPARE(runner.runs[0].directoryAtLaunch, QString("/job/folder"));
    QCOMPARE(runner.runs[0].input, QByteArray("user = \"ann:p\\\"a\\\\ss w\xc3\xb6rd\"\n"));
  }

  void cancelIsToldOnceThenForgotten() {
    storeServer("ftp://h/");
    FakeToolRunner runner;
    FakeDialogs dialogs;
    QMainWindow mainWindow;
    int compressionCancels = 0;
    UploadingFTP uploading(runner, dialogs, &mainWindow, [&] { ++compressionCancels; });
    uploading.btnUploadingFTPCancel();
    QCOMPARE(runner.cancels, 1);
    QCOMPARE(compressionCancels, 1);
    uploading.uploadFileToFTP("a.zip", "/f", false);
    QCOMPARE(dialogs.alerts.last().title, QString("FTP upload canceled"));
    QCOMPARE(dialogs.alerts.last().message, QString("Uploading terminated by the user."));
    QVERIFY(!uploading.isUploadingTerminatedByTheUser());
  }

  void curlsWordsDecide_data() {
    QTest::addColumn<QByteArray>("errors");
    QTest::addColumn<bool>("canceled");
    QTest::addColumn<QString>("title");
    QTest::newRow("progress only") << QByteArray("  0  100  6 --:--:--\n") << false << QString();
    QTest::newRow("Denied with a capital")
        << QByteArray("Access Denied\n") << false << "FTP login failed";
    QTest::newRow("(56) wins over cancel")
        << QByteArray("curl: (56) Recv failure\n") << true << "Failed to connect.";
    QTest::newRow("(6) before (7)")
        << QByteArray("curl: (7) x\ncurl: (6) y\n") << false << "Could not resolve host";
    QTest::newRow("cancel without a word") << QByteArray() << true << "FTP upload canceled";
    QTest::newRow("another curl error")
        << QByteArray("curl: (25) Upload failed\n") << false << "FTP transfer failed";
  }
  void curlsWordsDecide() {
    QFETCH(QByteArray, errors);
    QFETCH(bool, canceled);
    QFETCH(QString, title);
    const auto failure = FtpVerdict::of(errors, canceled);
    QCOMPARE(failure ? failure->title : QString(), title);
  }

  void theLoginTest_data() {
    QTest::addColumn<QString>("password");
    QTest::addColumn<QString>("title");
    QTest::newRow("right") << kPassword << "FTP login successful";
    QTest::newRow("wrong") << "wrong"
                           << "FTP login failed";
    QTest::newRow("empty") << ""
                           << "Error";
  }
  void theLoginTest() {
    QFETCH(QString, password);
    QFETCH(QString, title);
    Settings window;
    window.fill(address_, password);
    window.ftp.btnTest();
    QCOMPARE(window.dialogs.alerts.size(), 1);
    QCOMPARE(window.dialogs.alerts[0].title, title);
    if (password.isEmpty())
      QCOMPARE(window.dialogs.alerts[0].message, QString("Please enter password."));
  }

  void aRemoteFolderIsCreated() {
    Settings window;
    window.fill(address_.chopped(1), kPassword);
    window.ftp.btnCreateFTPDirectory();
    QVERIFY(window.ftp.newDirWindow()->isVisible());
    window.ftp.newDirTextBox()->setText("new folder");
    window.ftp.btnCreateDir();
    const QString url = address_ + "new%20folder/";
    QVERIFY(QFileInfo(serverRoot_.filePath("new folder")).isDir());
    QCOMPARE(window.dialogs.alerts.size(), 1);
    QCOMPARE(window.dialogs.alerts[0].title,
             QString("Quillet created directory successfuly.\nDirectory path:"));
    QCOMPARE(window.dialogs.alerts[0].message, url);
    QCOMPARE(window.ftp.ftpAddressBox()->text(), url);
    QVERIFY(!window.ftp.newDirWindow()->isVisible());
  }

  void aFailedFolderStillMovesTheAddress() {
    Settings window;
    window.fill(address_, "wrong");
    window.ftp.newDirTextBox()->setText("x");
    window.ftp.btnCreateDir();
    QCOMPARE(window.dialogs.alerts.last().title, QString("FTP login failed"));
    QCOMPARE(window.ftp.ftpAddressBox()->text(), address_ + "x/");
  }

  void saveStoresAndReopeningShowsIt() {
    PreferencesStore::remove(kFtpaddress);
    Settings window;
    window.ftp.btnFTPSettings();
    QVERIFY(window.ftp.ftpAddressBox()->text().isEmpty());
    window.fill("ftp://h/in/", "secret");
    window.ftp.btnSave();
    QVERIFY(!window.ftp.ftpSettingsWindow()->isVisible());
    QCOMPARE(PreferencesStore::text(kFtpaddress), QString("ftp://h/in/"));
    QCOMPARE(PreferencesStore::text(kFtppassword), QString("secret"));
    // The password is for the user's eyes only, also after later writes.
    PreferencesStore::setText(kMailsubject, "s");
    const QString file = QSettings("Quillet", "Quillet").fileName();
    QCOMPARE(QFile::permissions(file) & ~(QFile::ReadUser | QFile::WriteUser),
             QFile::ReadOwner | QFile::WriteOwner);
    Settings again;
    again.ftp.btnPreferencesFTPSettings();
    QCOMPARE(again.ftp.ftpUserNameBox()->text(), kUser);
    QCOMPARE(again.ftp.ftpPasswordBox()->text(), QString("secret"));
  }

  void screenshots() {
    const QString shots = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (shots.isEmpty())
      QSKIP("no QUILLET_SCREENSHOT_DIR");
    QDir().mkpath(shots);
    Settings window;
    window.ftp.btnFTPSettings();
    window.fill("ftp://ftp.example.com/uploads/", "secret");
    QVERIFY(QTest::qWaitForWindowExposed(window.ftp.ftpSettingsWindow()));
    QVERIFY(window.ftp.ftpSettingsWindow()->grab().save(shots + "/ftp-settings.png"));
    window.ftp.btnCreateFTPDirectory();
    window.ftp.newDirTextBox()->setText("releases");
    QVERIFY(QTest::qWaitForWindowExposed(window.ftp.newDirWindow()));
    QVERIFY(window.ftp.newDirWindow()->grab().save(shots + "/ftp-new-folder.png"));

    Uploader upload;
    upload.uploading.showUploadingWindow("ftp://ftp.example.com/uploads/",
                                         "Holiday photos 2026.zip");
    upload.uploading.setUploadingIndicator(true);
    QWidget* uploadingWindow = upload.uploading.outletUploadingWindow();
    QVERIFY(QTest::qWaitForWindowExposed(uploadingWindow));
    QVERIFY(uploadingWindow->grab().save(shots + "/uploading.png"));
  }

 private:
  struct Settings {
    ProcessToolRunner runner;
    FakeDialogs dialogs;
    QWidget owner;
    classFTP ftp{runner, dialogs, &owner};

    void fill(const QString& address, const QString& password) {
      ftp.ftpAddressBox()->setText(address);
      ftp.ftpUserNameBox()->setText(kUser);
      ftp.ftpPasswordBox()->setText(password);
    }
  };

  QTemporaryDir serverRoot_;
  std::unique_ptr<LocalServer> server_;
  QString address_;
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << QStringLiteral("/usr/share/icons"));
  QIcon::setThemeName(QStringLiteral("breeze"));
  FtpUploadTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_ftp_upload.moc"
