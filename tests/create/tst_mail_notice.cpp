#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "app/Engine.h"
#include "create/ArchiveCreation.h"
#include "create/ClassEmail.h"
#include "create/CreateArchiveListView.h"
#include "create/CreateArchiveWindow.h"
#include "create/CreateTab.h"
#include "create/MailNotice.h"
#include "platform/PreferenceKeys.h"
#include "platform/ProcessToolRunner.h"
#include "support/LocalServer.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

namespace {

using namespace PreferenceKeys;
using TestArchives::contentOf;
using TestArchives::writeFile;

const QString kAddress = QStringLiteral("ann@example.org");

void storeMail(const QString& attach, const QString& date) {
  PreferencesStore::setText(kMailaddress, kAddress);
  PreferencesStore::setText(kMailsubject, "New archive");
  PreferencesStore::setText(kMailmessage, "Hello,\n.\nhere it is.");
  PreferencesStore::setText(kAttachlink, attach);
  PreferencesStore::setText(kIncludedate, date);
}

// The headers of a received message and its body, line ends as sent.
struct Received {
  QMap<QString, QString> headers;
  QString body;

  static Received from(const QByteArray& text) {
    Received received;
    const qsizetype split = text.indexOf("\r\n\r\n");
    for (const QByteArray& line : text.left(split).split('\n')) {
      const qsizetype colon = line.indexOf(':');
      received.headers[QString::fromUtf8(line.left(colon))] =
          QString::fromUtf8(line.mid(colon + 1).trimmed());
    }
    received.body = QString::fromUtf8(text.mid(split + 4)).replace("\r\n", "\n");
    return received;
  }
};

}  // namespace

// The e-mail notice after an upload: its settings, its text, and a real
// message through msmtp to an SMTP server on the loopback interface.
class MailNoticeTest : public QObject {
  Q_OBJECT

 private slots:
  void theBodyFollowsTheSettings_data() {
    QTest::addColumn<bool>("attach");
    QTest::addColumn<bool>("date");
    QTest::addColumn<QString>("body");
    const QString end = "\n\n\nSent by Quillet";
    QTest::newRow("message only") << false << false << "Hi" + end;
    QTest::newRow("link") << true << false << "Hi\n\nUploaded archive link: ftp://h/a.zip" + end;
    QTest::newRow("date") << false << true
                          << "Hi\nFile upload completed at: 05.03.26 07:08:09" + end;
    QTest::newRow("both") << true << true
                          << "Hi\n\nUploaded archive link: ftp://h/a.zip\nFile upload completed "
                             "at: 05.03.26 07:08:09" +
                                 end;
  }
  void theBodyFollowsTheSettings() {
    QFETCH(bool, attach);
    QFETCH(bool, date);
    QFETCH(QString, body);
    const MailNotice::Settings settings{kAddress, "s", "Hi", attach, date};
    QCOMPARE(MailNotice::body(settings, "ftp://h/a.zip", QDateTime({2026, 3, 5}, {7, 8, 9})), body);
  }

  void aTypedLineEndCannotAddAHeader() {
    const MailNotice::Settings settings{kAddress, "Hi\nBcc: eve@example.org", "", false, false};
    const QByteArray message = MailNotice::message(settings, "b", QDateTime::currentDateTime());
    QVERIFY(message.contains("Subject: Hi Bcc: eve@example.org\n"));
    QVERIFY(!message.contains("\nBcc:"));
    const MailNotice::Settings greeting{kAddress, "Grüße", "", false, false};
    QVERIFY(MailNotice::message(greeting, "b", QDateTime::currentDateTime())
                .contains("Subject: =?UTF-8?B?" + QString("Grüße").toUtf8().toBase64() + "?=\n"));
  }

  void theSettingsKeepOneAndZero() {
    for (const QString& key : {kMailaddress, kMailsubject, kMailmessage, kAttachlink, kIncludedate})
      PreferencesStore::remove(key);
    QWidget owner;
    ClassEmail email(&owner);
    email.btnOpenEmailSettings();
    QVERIFY(email.mailSettingsWindow()->isVisible());
    email.fieldTo()->setText(kAddress);
    email.fieldSubject()->setText("Subject");
    email.fieldMessage()->setPlainText("Two\nlines");
    email.chkAttachLinkOutlet()->setChecked(true);
    email.btnSave();
    QVERIFY(!email.mailSettingsWindow()->isVisible());
    QCOMPARE(PreferencesStore::text(kAttachlink), QString("1"));
    QCOMPARE(PreferencesStore::text(kIncludedate), QString("0"));
    QCOMPARE(PreferencesStore::text(kMailmessage), QString("Two\nlines"));

    ClassEmail again(&owner);
    again.btnOpenEmailSettings();
    QCOMPARE(again.fieldTo()->text(), kAddress);
    QCOMPARE(again.fieldMessage()->toPlainText(), QString("Two\nlines"));
    QVERIFY(again.chkAttachLinkOutlet()->isChecked());
    QVERIFY(!again.chkIncludeDateOutlet()->isChecked());
  }

  void theNoticeNeedsItsSettings_data() {
    QTest::addColumn<QString>("address");  // null: absent
    QTest::addColumn<QString>("message");
    QTest::addColumn<QStringList>("alerts");
    QTest::newRow("nothing stored")
        << QString() << QString() << QStringList{"Email settings not configured"};
    QTest::newRow("no message") << kAddress << QString()
                                << QStringList{"Email settings not configured"};
    QTest::newRow("empty address") << ""
                                   << "m" << QStringList{"Email address not set"};
    QTest::newRow("empty address, no message")
        << "" << QString() << QStringList{"Email settings not configured", "Email address not set"};
    QTest::newRow("ready") << kAddress << "m" << QStringList{};
  }
  void theNoticeNeedsItsSettings() {
    QFETCH(QString, address);
    QFETCH(QString, message);
    QFETCH(QStringList, alerts);
    for (const auto& [key, value] : {std::pair{kMailaddress, address}, {kMailmessage, message}}) {
      if (value.isNull())
        PreferencesStore::remove(key);
      else
        PreferencesStore::setText(key, value);
    }
    Window window;
    CreateArchiveWindow* options = window.engine.creation()->createArchiveWindow();
    QCheckBox* sendMail = options->chkSendMailAfterUploadIsCompletedOutlet();
    QVERIFY(!sendMail->isVisibleTo(options));
    options->chkUploadToFTPAfterCompression()->click();
    QVERIFY(sendMail->isVisibleTo(options));
    sendMail->click();
    QStringList titles;
    for (const FakeDialogs::Alert& alert : window.dialogs.alerts)
      titles << alert.title;
    QCOMPARE(titles, alerts);
    QCOMPARE(sendMail->isChecked(), alerts.isEmpty());
  }

  // The whole way: a job makes the archive in its own folder, uploads it
  // and sends the notice with its link.
  void aNewArchiveIsUploadedAndAnnounced() {
    QTemporaryDir serverRoot, mailbox, work;
    const auto ftp = LocalServer::ftp(serverRoot.path(), "ann", "secret");
    const auto smtp = LocalServer::smtp(mailbox.path());
    QVERIFY2(ftp->listening() && smtp->listening(), "the FTP or SMTP server did not start");
    const QString sendmail = work.filePath("sendmail");
    pointMsmtpAt(smtp->port(), sendmail);
    qputenv("QUILLET_SENDMAIL", sendmail.toUtf8());
    const QString address = QString("ftp://127.0.0.1:%1/").arg(ftp->port());
    PreferencesStore::setText(kFtpaddress, address);
    PreferencesStore::setText(kFtpusername, "ann");
    PreferencesStore::setText(kFtppassword, "secret");
    storeMail("1", "1");

    writeFile(work.filePath("report.txt"), "the report\n");
    Window window;
    window.engine.ui().mainWindow->show();
    window.engine.createTab()->list()->addFiles({work.filePath("report.txt")});
    window.dialogs.saveAnswers << work.filePath("made");
    window.engine.creation()->btnCreateAction();
    CreateArchiveWindow* options = window.engine.creation()->createArchiveWindow();
    options->chkUploadToFTPAfterCompression()->click();
    options->chkSendMailAfterUploadIsCompletedOutlet()->click();
    QSignalSpy finished(window.engine.creation(), &ArchiveCreation::jobFinished);
    options->findChild<QPushButton*>("btnCompress")->click();
    QVERIFY(finished.wait(60000));

    QCOMPARE(contentOf(serverRoot.filePath("made.zip")), contentOf(work.filePath("made.zip")));
    QCOMPARE(window.dialogs.alerts.size(), 1);
    QCOMPARE(window.dialogs.alerts[0].message, address + "made.zip");
    const Received mail = Received::from(contentOf(mailbox.filePath("message-1.eml")));
    QCOMPARE(mail.headers["MAIL FROM"], kAddress);
    QCOMPARE(mail.headers["RCPT TO"], kAddress);
    QCOMPARE(mail.headers["From"], kAddress);
    QCOMPARE(mail.headers["To"], kAddress);
    QCOMPARE(mail.headers["Subject"], QString("New archive"));
    const QString completedAt = "\nFile upload completed at: ";
    QVERIFY(mail.body.startsWith("Hello,\n.\nhere it is.\n\nUploaded archive link: " + address +
                                 "made.zip" + completedAt));
    const QString stamp = mail.body.section(completedAt, 1).section('\n', 0, 0);
    QVERIFY2(QDateTime::fromString(stamp, "dd.MM.yy HH:mm:ss").isValid(), qPrintable(stamp));
    QVERIFY(mail.body.endsWith("\n\n\nSent by Quillet\n"));
  }

  void screenshots() {
    const QString shots = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (shots.isEmpty())
      QSKIP("no QUILLET_SCREENSHOT_DIR");
    QDir().mkpath(shots);
    storeMail("1", "0");
    QWidget owner;
    ClassEmail email(&owner);
    email.btnOpenEmailSettings();
    QVERIFY(QTest::qWaitForWindowExposed(email.mailSettingsWindow()));
    QVERIFY(email.mailSettingsWindow()->grab().save(shots + "/email-settings.png"));

    Window window;
    CreateArchiveWindow* options = window.engine.creation()->createArchiveWindow();
    options->chkUploadToFTPAfterCompression()->click();
    options->show();
    QVERIFY(QTest::qWaitForWindowExposed(options));
    QVERIFY(options->grab().save(shots + "/create-window-upload.png"));
  }

 private:
  struct Window {
    ProcessToolRunner runner;
    ProcessToolRunner jobRunner;
    FakeDialogs dialogs;
    FakeDesktop desktop;
    Engine engine{runner, jobRunner, dialogs, desktop};
  };

  // msmtp as the sendmail program, sending to the test's server.
  static void pointMsmtpAt(quint16 port, const QString& sendmail) {
    const QString config = sendmail + ".msmtprc";
    writeFile(config, QString("account default\nhost 127.0.0.1\nport %1\nfrom %2\nauth off\n"
                              "tls off\n")
                          .arg(port)
                          .arg(kAddress)
                          .toUtf8());
    QFile::setPermissions(config, QFile::ReadOwner | QFile::WriteOwner);
    writeFile(sendmail,
              QString("#!/bin/sh\nexec /usr/bin/msmtp -C '%1' \"$@\"\n").arg(config).toUtf8());
    QFile::setPermissions(sendmail, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << QStringLiteral("/usr/share/icons"));
  QIcon::setThemeName(QStringLiteral("breeze"));
  MailNoticeTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_mail_notice.moc"
