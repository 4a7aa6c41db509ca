#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <optional>

class ToolRunner;

// The e-mail notice after an upload: the body built from the e-mail
// settings, sent from and to the one address through a sendmail-compatible
// program ($QUILLET_SENDMAIL, else /usr/sbin/sendmail) with "-t -i".
namespace MailNotice {

struct Settings {
  QString address;
  QString subject;
  QString message;
  bool attachLink = false;
  bool includeDate = false;

  static Settings stored();
};

QString body(const Settings& settings, const QString& link, const QDateTime& completedAt);
// The whole message as the program reads it on standard input.
QByteArray message(const Settings& settings, const QString& body, const QDateTime& sentAt);
QString sendmailProgram();

// Sends the notice for the link; what went wrong, if anything.
std::optional<QString> sendEmail(ToolRunner& runner, const QString& link);

}  // namespace MailNotice
