#include "engine/ArchiveContents.h"

#include "engine/ArchiveCommands.h"
#include "engine/ArchiveType.h"
#include "platform/ToolRunner.h"

#include <QRegularExpression>

namespace {

const QString kSeparator = QStringLiteral("----------");

bool saysWrongPassword(const QString& said) {
  return said.contains(u"Wrong password") || said.contains(u"Enter password") ||
         said.contains(u"Cannot open encrypted archive");
}

// tar's escape style: C escapes and three-digit octal bytes.
QByteArray unescaped(QByteArrayView text) {
  static const QHash<char, char> simple = {{'\\', '\\'}, {'n', '\n'}, {'t', '\t'}, {'a', '\a'},
                                           {'b', '\b'},  {'f', '\f'}, {'r', '\r'}, {'v', '\v'},
                                           {'?', '?'},   {' ', ' '}};
  QByteArray bytes;
  for (qsizetype i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c != '\\' || i + 1 == text.size()) {
      bytes += c;
      continue;
    }
    const char next = text[i + 1];
    if (next >= '0' && next <= '7' && i + 3 < text.size()) {
      bytes += static_cast<char>(text.sliced(i + 1, 3).toByteArray().toInt(nullptr, 8));
      i += 3;
    } else {
      bytes += simple.value(next, next);
      ++i;
    }
  }
  return bytes;
}

}  // namespace

QList<ContentEntry> ArchiveContents::under(const QStringList& paths) const {
  QList<ContentEntry> found;
  for (const ContentEntry& entry : entries) {
    for (const QString& path : paths) {
      if (entry.path == path ||
          (entry.path.startsWith(path) && entry.path.at(path.size()) == u'/')) {
        found << entry;
        break;
      }
    }
  }
  return found;
}

ArchiveContents ArchiveContents::fromTechnicalListing(const QString& listing) {
  ArchiveContents contents;
  const QStringList lines = listing.split(u'\n');
  const qsizetype start = lines.indexOf(kSeparator);
  if (start < 0)
    return contents;
  for (qsizetype i = start + 1; i < lines.size(); ++i) {
    const QString& line = lines[i];
    if (line.startsWith(u"Path = ")) {
      contents.entries.append({line.mid(7)});
      continue;
    }
    if (contents.entries.isEmpty())
      continue;
    ContentEntry& entry = contents.entries.last();
    if (line.startsWith(u"Size = "))
      entry.size = line.mid(7).toLongLong();
    else if (line == u"Folder = +" || line.startsWith(u"Attributes = D"))
      entry.folder = true;
    else if (line == u"Encrypted = +")
      entry.encrypted = true;
  }
  return contents;
}

ArchiveContents ArchiveContents::fromTarListing(const QByteArray& listing) {
  // "-rw-r--r-- 0/0 1234 2026-11-23 14:07 name", links with " -> target".
  static const QRegularExpression line(
      QStringLiteral("^(\\S)\\S*\\s+\\S+\\s+(\\d+|\\d+,\\s*\\d+)\\s+(\\S+)\\s+(\\S+)\\s(.*)$"));
  ArchiveContents contents;
  contents.complete = true;
  for (const QByteArray& raw : listing.split('\n')) {
    if (raw.isEmpty())
      continue;
    const QRegularExpressionMatch match = line.match(QString::fromLatin1(raw));
    if (!match.hasMatch()) {
      contents.complete = false;
      continue;
    }
    const QChar kind = match.captured(1).front();
    QString name = match.captured(5);
    if (kind == u'l')
      name = name.section(QStringLiteral(" -> "), 0, 0);
    else if (kind == u'h')
      name = name.section(QStringLiteral(" link to "), 0, 0);
    const QByteArray bytes = unescaped(name.toLatin1());
    if (!bytes.isValidUtf8())
      contents.complete = false;
    ContentEntry entry{QString::fromUtf8(bytes), match.captured(2).toLongLong(), kind == u'd'};
    if (entry.path.endsWith(u'/'))
      entry.path.chop(1);
    entry.modified = match.captured(3) + u' ' + match.captured(4);
    contents.entries << entry;
  }
  return contents;
}

ArchiveContents ArchiveContents::read(ToolRunner& runner, const QString& type, const QString& path,
                                      const QString& passwordSwitch) {
  // tar finds the compression itself.
  if (type == ArchiveType::Tbz2 || type == ArchiveType::Bz2 || ArchiveType::isCompressedTar(type)) {
    const ToolResult result = runner.run(ArchiveCommands::compressedTarListing(path));
    ArchiveContents contents = fromTarListing(result.output);
    contents.complete = contents.complete && result.succeeded();
    return contents;
  }
  const ToolResult result = runner.run(ArchiveCommands::technicalListing(path, passwordSwitch));
  const QString said = QString::fromUtf8(result.output + result.errors);
  ArchiveContents contents = fromTechnicalListing(result.text());
  contents.wrongPassword = saysWrongPassword(said);
  contents.complete = result.succeeded() && result.output.isValidUtf8() && !contents.wrongPassword;
  return contents;
}
