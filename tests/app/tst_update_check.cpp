#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "app/UpdateClass.h"
#include "platform/PreferenceKeys.h"
#include "support/LocalServer.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QElapsedTimer>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTcpServer>
#include <QTemporaryDir>
#include <QTest>

namespace {

using namespace PreferenceKeys;
using TestArchives::writeFile;

struct Check {
  FakeDialogs dialogs;
  FakeDesktop desktop;
  QWidget owner;
  UpdateClass updates{dialogs, desktop, &owner};
};

}  // namespace

// The new-version check against a real HTTP server on the loopback
// interface serving the update folder.
class UpdateCheckTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    QCoreApplication::setApplicationVersion("1.2");
    QVERIFY(site_.isValid());
    QDir(site_.path()).mkpath("updates");
    server_ = LocalServer::http(site_.path());
    QVERIFY2(server_->listening(), "the HTTP server (python3 -m http.server) did not start");
    // Without the trailing "/": the files are still looked for inside.
    folder_ = QString("http://127.0.0.1:%1/updates").arg(server_->port());
    qputenv("QUILLET_UPDATE_URL", folder_.toUtf8());
  }
  void cleanupTestCase() { server_.reset(); }

  void onlyADifferentTextIsAnUpdate_data() {
    QTest::addColumn<QByteArray>("served");
    QTest::addColumn<QByteArray>("notes");
    QTest::addColumn<bool>("shown");
    QTest::addColumn<QString>("shownNotes");
    QTest::newRow("same version") << QByteArray("1.2") << QByteArray("x") << false << QString();
    QTest::newRow("trailing line end")
        << QByteArray("1.2\n") << QByteArray("Faster.\n") << true << "Faster.\n";
    QTest::newRow("older") << QByteArray("1.1") << QByteArray("Old.") << true << "Old.";
    QTest::newRow("empty notes") << QByteArray("2.0") << QByteArray() << true
                                 << "No information available.";
  }
  void onlyADifferentTextIsAnUpdate() {
    QFETCH(QByteArray, served);
    QFETCH(QByteArray, notes);
    QFETCH(bool, shown);
    QFETCH(QString, shownNotes);
    serve(served, notes);
    Check check;
    check.updates.CheckForNewVersion();
    QCOMPARE(check.updates.updateWindow()->isVisible(), shown);
    QVERIFY(check.dialogs.alerts.isEmpty());
    if (!shown)
      return;
    QCOMPARE(check.updates.versionNumber()->text(), "New: v" + QString::fromUtf8(served));
    QCOMPARE(check.updates.installedVersion()->text(), QString("Installed: v1.2"));
    QCOMPARE(check.updates.textField()->toPlainText(), shownNotes);
    QVERIFY(check.updates.downloadBtn()->isEnabled());
    check.updates.downloadBtn()->click();
    QCOMPARE(check.desktop.openedUrls, QStringList{folder_ + "/Quillet.zip"});
  }

  void startUpFollowsThePreference_data() {
    QTest::addColumn<QString>("stored");  // null: absent
    QTest::addColumn<bool>("checked");
    QTest::newRow("absent") << QString() << true;
    QTest::newRow("YES") << "YES" << true;
    QTest::newRow("NO") << "NO" << false;
    QTest::newRow("other text") << "no" << true;
  }
  void startUpFollowsThePreference() {
    QFETCH(QString, stored);
    QFETCH(bool, checked);
    if (stored.isNull())
      PreferencesStore::remove(kAutoCheckForNewVersion);
    else
      PreferencesStore::setText(kAutoCheckForNewVersion, stored);
    serve("9.9", "New.");
    Check check;
    check.updates.awakeFromNib();
    QCOMPARE(check.updates.updateWindow()->isVisible(), checked);
    QCOMPARE(check.updates.chkBoxAutoUpdate()->isChecked(), checked);
    QCOMPARE(PreferencesStore::contains(kAutoCheckForNewVersion), !stored.isNull());
  }

  void theMenuShowsTheNotesWhateverIsInstalled() {
    serve("1.2", "Same as yours.");
    Check check;
    check.updates.mnuLatestVersionChanges();
    QVERIFY(check.updates.updateWindow()->isVisible());
    QCOMPARE(check.updates.versionNumber()->text(), QString("New: v1.2"));
    QCOMPARE(check.updates.textField()->toPlainText(), QString("Same as yours."));
    QVERIFY(!check.updates.downloadBtn()->isEnabled());
  }

  void withoutAServerOnlyTheMenuSaysSo() {
    const QByteArray closed =
        QString("http://127.0.0.1:%1/").arg(LocalServer::closedPort()).toUtf8();
    qputenv("QUILLET_UPDATE_URL", closed);
    Check check;
    check.updates.CheckForNewVersion();
    QVERIFY(check.dialogs.alerts.isEmpty());
    check.updates.mnuLatestVersionChanges();
    qputenv("QUILLET_UPDATE_URL", folder_.toUtf8());
    QVERIFY(!check.updates.updateWindow()->isVisible());
    QCOMPARE(check.dialogs.alerts.size(), 1);
    QCOMPARE(check.dialogs.alerts[0].title, QString("No internet connection."));
    QCOMPARE(check.dialogs.alerts[0].message,
             QString("Can not get the latest update changes due to no internet connection "
                     "available."));
  }

  // A server that takes the connection and never answers holds start-up up
  // for a few seconds at most.
  void aSilentServerIsGivenUp() {
    QTcpServer silent;
    QVERIFY(silent.listen(QHostAddress::LocalHost));
    qputenv("QUILLET_UPDATE_URL",
            QString("http://127.0.0.1:%1/").arg(silent.serverPort()).toUtf8());
    PreferencesStore::remove(kAutoCheckForNewVersion);
    Check check;
    QElapsedTimer clock;
    clock.start();
    check.updates.awakeFromNib();
    qputenv("QUILLET_UPDATE_URL", folder_.toUtf8());
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    QVERIFY(!check.updates.updateWindow()->isVisible());
  }

  void screenshots() {
    const QString shots = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (shots.isEmpty())
      QSKIP("no QUILLET_SCREENSHOT_DIR");
    QDir().mkpath(shots);
    serve("1.3",
          "What is new in 1.3:\n\n- Archives upload to FTP servers.\n- An e-mail notice "
          "with the link can follow the upload.\n- Faster listing of large archives.\n");
    PreferencesStore::remove(kAutoCheckForNewVersion);
    Check check;
    check.updates.awakeFromNib();
    QVERIFY(QTest::qWaitForWindowExposed(check.updates.updateWindow()));
    QVERIFY(check.updates.updateWindow()->grab().save(shots + "/update-window.png"));
  }

 private:
  void serve(const QByteArray& version, const QByteArray& notes) {
    writeFile(site_.filePath("updates/currentversion.txt"), version);
    writeFile(site_.filePath("updates/updatechanges.txt"), notes);
  }

  QTemporaryDir site_;
  std::unique_ptr<LocalServer> server_;
  QString folder_;
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << QStringLiteral("/usr/share/icons"));
  QIcon::setThemeName(QStringLiteral("breeze"));
  UpdateCheckTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_update_check.moc"
