#include "create/FtpVerdict.h"

#include <QList>

namespace FtpVerdict {
namespace {

bool mentions(const QString& text, const char* marker) {
  return text.contains(QLatin1String(marker), Qt::CaseInsensitive);
}

// curl's own error line, without the progress meter around it.
QString curlErrorLine(const QString& text) {
  const qsizetype at = text.lastIndexOf(QLatin1String("curl: ("));
  return text.mid(at).section(u'\n', 0, 0).trimmed();
}

}  // namespace

std::optional<Failure> of(const QByteArray& errors, bool canceledByUser) {
  const QString text = QString::fromUtf8(errors);
  using Kind = Failure::Kind;
  if (mentions(text, "curl: (6)"))
    return Failure{Kind::CouldNotResolve, QStringLiteral("Could not resolve host"),
                   QStringLiteral("Quillet is unable to resoulve the host address.\nPlease double "
                                  "check the FTP address.")};
  if (mentions(text, "curl: (7)"))
    return Failure{Kind::ConnectFailed, QStringLiteral("Failed to connect."),
                   QStringLiteral("Please check your internet connection and the host address "
                                  "state.")};
  if (mentions(text, "curl: (56)"))
    return Failure{Kind::ConnectionLost, QStringLiteral("Failed to connect."),
                   QStringLiteral("Please double check the host address.")};
  if (canceledByUser)
    return Failure{Kind::Canceled, QStringLiteral("FTP upload canceled"),
                   QStringLiteral("Uploading terminated by the user.")};
  if (mentions(text, "denied"))
    return Failure{
        Kind::LoginFailed, QStringLiteral("FTP login failed"),
        QStringLiteral("Quillet can not connect to the FTP server.\nPossible reasons:\n\n- "
                       "Wrong FTP address or subdirectory (subdirectory must end with /)\n- "
                       "Wrong user name or password\n- FTP server is down, please check "
                       "the FTP server state")};
  if (mentions(text, "curl: ("))
    return Failure{Kind::Other, QStringLiteral("FTP transfer failed"), curlErrorLine(text)};
  return std::nullopt;
}

}  // namespace FtpVerdict
