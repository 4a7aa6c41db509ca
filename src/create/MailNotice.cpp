#include "create/MailNotice.h"

#include "engine/ToolProblem.h"
#include "platform/PreferenceKeys.h"
#include "platform/ToolRunner.h"

#include <QStringList>

namespace MailNotice {
namespace {

constexpr qsizetype kEncodedWordBytes = 45;

// A header value stays on its line: no typed line end can start a header
// of its own.
QString oneLine(const QString& value) {
  QString line = value;
  line.replace(u'\r', u' ').replace(u'\n', u' ');
  return line;
}

bool isAscii(const QString& text) {
  return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

// RFC 2047 words of whole characters, short enough for a header line.
QByteArray encodedHeader(const QString& value) {
  if (isAscii(value))
    return value.toLatin1();
  QList<QByteArray> words;
  QByteArray chunk;
  const QList<uint> characters = value.toUcs4();
  for (const uint character : characters) {
    const QByteArray bytes =
        QString::fromUcs4(reinterpret_cast<const char32_t*>(&character), 1).toUtf8();
    if (chunk.size() + bytes.size() > kEncodedWordBytes) {
      words << "=?UTF-8?B?" + chunk.toBase64() + "?=";
      chunk.clear();
    }
    chunk += bytes;
  }
  if (!chunk.isEmpty())
    words << "=?UTF-8?B?" + chunk.toBase64() + "?=";
  return words.join("\n ");
}

}  // namespace

Settings Settings::stored() {
  using namespace PreferenceKeys;
  return {PreferencesStore::text(kMailaddress), PreferencesStore::text(kMailsubject),
          PreferencesStore::text(kMailmessage), PreferencesStore::text(kAttachlink) == u"1",
          PreferencesStore::text(kIncludedate) == u"1"};
}

QString body(const Settings& settings, const QString& link, const QDateTime& completedAt) {
  QString text = settings.message;
  if (settings.attachLink)
    text += QStringLiteral("\n\nUploaded archive link: ") + link;
  if (settings.includeDate)
    text += QStringLiteral("\nFile upload completed at: ") +
            completedAt.toString(QStringLiteral("dd.MM.yy HH:mm:ss"));
  return text + QStringLiteral("\n\n\nSent by Quillet");
}

QByteArray message(const Settings& settings, const QString& body, const QDateTime& sentAt) {
  const QByteArray address = oneLine(settings.address).toUtf8();
  QByteArray text;
  text += "From: " + address + '\n';
  text += "To: " + address + '\n';
  text += "Subject: " + encodedHeader(oneLine(settings.subject)) + '\n';
  text += "Date: " + sentAt.toString(Qt::RFC2822Date).toLatin1() + '\n';
  text += "MIME-Version: 1.0\n";
  text += "Content-Type: text/plain; charset=UTF-8\n";
  text += "Content-Transfer-Encoding: 8bit\n\n";
  QString lines = body;
  lines.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(u'\r', u'\n');
  text += lines.toUtf8();
  if (!text.endsWith('\n'))
    text += '\n';
  return text;
}

QString sendmailProgram() {
  const QString chosen = qEnvironmentVariable("QUILLET_SENDMAIL");
  return chosen.isEmpty() ? QStringLiteral("/usr/sbin/sendmail") : chosen;
}

std::optional<QString> sendEmail(ToolRunner& runner, const QString& link) {
  const Settings settings = Settings::stored();
  const QDateTime now = QDateTime::currentDateTime();
  ToolRun run{sendmailProgram(), {QStringLiteral("-t"), QStringLiteral("-i")}};
  run.input = message(settings, body(settings, link, now), now);
  const ToolResult result = runner.run(run);
  if (const std::optional<ToolProblem> problem = ToolProblem::of(run, result))
    return QStringLiteral("The e-mail notice was not sent: ") + problem->message;
  return std::nullopt;
}

}  // namespace MailNotice
