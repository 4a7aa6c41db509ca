#include "create/FtpCommands.h"

#include <QUrl>

namespace FtpCommands {
namespace {

const QStringList kCredentialsFromInput = {QStringLiteral("-K"), QStringLiteral("-")};

ToolRun curl(const QStringList& arguments, const QString& user, const QString& password) {
  ToolRun run{kCurl, arguments};
  run.input = credentials(user, password);
  return run;
}

}  // namespace

QString folderAddress(const QString& address) {
  return address.endsWith(u'/') ? address : address + u'/';
}

QString addressSegment(const QString& name) {
  // Sub-delimiters, ":", "@" and "/" (folders within folders) stay as typed.
  return QString::fromLatin1(QUrl::toPercentEncoding(name, "!$&'()*+,;=:@/"));
}

ToolRun upload(const QString& path, const QString& link, const QString& user,
               const QString& password) {
  return curl(kCredentialsFromInput + QStringList{QStringLiteral("-T"), path, link}, user,
              password);
}

ToolRun loginTest(const QString& address, const QString& user, const QString& password) {
  return curl(QStringList{address} + kCredentialsFromInput, user, password);
}

ToolRun createDirectory(const QString& url, const QString& user, const QString& password) {
  return curl(
      QStringList{QStringLiteral("--ftp-create-dirs")} + kCredentialsFromInput + QStringList{url},
      user, password);
}

QByteArray credentials(const QString& user, const QString& password) {
  QByteArray value = (user + u':' + password).toUtf8();
  QByteArray quoted;
  for (const char c : value) {
    switch (c) {
      case '\\':
      case '"':
        quoted += '\\';
        quoted += c;
        break;
      case '\n':
        quoted += "\\n";
        break;
      case '\r':
        quoted += "\\r";
        break;
      case '\t':
        quoted += "\\t";
        break;
      default:
        quoted += c;
    }
  }
  return "user = \"" + quoted + "\"\n";
}

}  // namespace FtpCommands
