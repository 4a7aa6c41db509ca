#pragma once

#include <QHostAddress>
#include <QProcess>
#include <QRegularExpression>
#include <QTcpServer>
#include <QTest>

#include <memory>

// A server on a free loopback port, run by Debian's python3 for one test
// and stopped with it. The script (or module) prints the port it listens
// on once it is ready; nothing is waited for beyond that line.
class LocalServer {
 public:
  explicit LocalServer(const QStringList& pythonArguments) {
    process_.setStandardErrorFile(QProcess::nullDevice());
    process_.start(QStringLiteral("/usr/bin/python3"),
                   QStringList{QStringLiteral("-u")} + pythonArguments);
    static const QRegularExpression portLine(QStringLiteral("(?:^|port )(\\d+)"));
    QByteArray line;
    while (process_.state() != QProcess::NotRunning && !line.endsWith('\n')) {
      if (process_.canReadLine() || process_.waitForReadyRead(kStartMs))
        line += process_.readLine();
      else
        break;
    }
    const QRegularExpressionMatch match = portLine.match(QString::fromUtf8(line));
    if (match.hasMatch())
      port_ = match.captured(1).toUShort();
  }
  LocalServer(const LocalServer&) = delete;
  LocalServer& operator=(const LocalServer&) = delete;
  ~LocalServer() {
    process_.terminate();
    if (!process_.waitForFinished(kStopMs))
      process_.kill();
    process_.waitForFinished(kStopMs);
  }

  // An FTP server (python3-pyftpdlib) with one user whose home is root.
  static std::unique_ptr<LocalServer> ftp(const QString& root, const QString& user,
                                          const QString& password) {
    return std::make_unique<LocalServer>(
        QStringList{QStringLiteral("-c"), QString::fromLatin1(kFtpServer), root, user, password});
  }
  // An SMTP server (python3-aiosmtpd) that writes each message it accepts
  // to folder/message-N.eml, after lines naming the envelope's sender and
  // recipients.
  static std::unique_ptr<LocalServer> smtp(const QString& folder) {
    return std::make_unique<LocalServer>(
        QStringList{QStringLiteral("-c"), QString::fromLatin1(kSmtpServer), folder});
  }
  // An HTTP server for the files in folder.
  static std::unique_ptr<LocalServer> http(const QString& folder) {
    return std::make_unique<LocalServer>(
        QStringList{"-m", "http.server", "0", "--bind", "127.0.0.1", "--directory", folder});
  }

  bool listening() const { return port_ != 0; }
  quint16 port() const { return port_; }

  // A loopback port that nothing listens on.
  static quint16 closedPort() {
    QTcpServer probe;
    probe.listen(QHostAddress::LocalHost);
    return probe.serverPort();
  }

 private:
  static constexpr const char* kFtpServer = R"(
import logging, sys
from pyftpdlib.authorizers import DummyAuthorizer
from pyftpdlib.handlers import FTPHandler
from pyftpdlib.servers import FTPServer
logging.disable(logging.CRITICAL)
users = DummyAuthorizer()
users.add_user(sys.argv[2], sys.argv[3], sys.argv[1], perm="elradfmwMT")
class Handler(FTPHandler):
    authorizer = users
    auth_failed_timeout = 0
server = FTPServer(("127.0.0.1", 0), Handler)
print(server.socket.getsockname()[1])
server.serve_forever()
)";
  static constexpr const char* kSmtpServer = R"(
import asyncio, os, sys
from aiosmtpd.smtp import SMTP
class Keeper:
    count = 0
    async def handle_DATA(self, server, session, envelope):
        Keeper.count += 1
        path = os.path.join(sys.argv[1], "message-%d" % Keeper.count)
        head = "MAIL FROM: %s\nRCPT TO: %s\n" % (envelope.mail_from, ",".join(envelope.rcpt_tos))
        with open(path + ".part", "wb") as out:
            out.write(head.encode() + envelope.original_content)
        os.rename(path + ".part", path + ".eml")
        return "250 OK"
async def main():
    keeper = Keeper()
    server = await asyncio.get_running_loop().create_server(
        lambda: SMTP(keeper), "127.0.0.1", 0)
    print(server.sockets[0].getsockname()[1])
    await server.serve_forever()
asyncio.run(main())
)";
  static constexpr int kStartMs = 30000;
  static constexpr int kStopMs = 5000;
  QProcess process_;
  quint16 port_ = 0;
};
