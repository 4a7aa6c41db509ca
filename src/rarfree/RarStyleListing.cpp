#include "rarfree/RarStyleListing.h"

#include <QRegularExpression>
#include <QStringList>

namespace {

const QString kHeader = QStringLiteral(
    " Name             Size   Packed Ratio  Date   Time     Attr      CRC   Meth Ver");
const QString kRuler = QString(79, u'-');
// Stands in the place of the entries when 7-Zip cannot read them; it has
// fewer values than an entry line, so Quillet lists nothing for it.
const QString kEncryptedNames = QStringLiteral("*encrypted file names: a password is needed");
constexpr qsizetype kNameWidth = 16;

QString ratio(qint64 packed, qint64 size) {
  const qint64 percent = size > 0 ? (packed * 100 + size / 2) / size : 0;
  return QString::number(percent) + u'%';
}

// "-rw-r--r--" when 7-Zip has Unix permissions, otherwise the Windows
// attributes in fixed places, such as "..A...".
QString attributesToken(const RarEntry& entry) {
  const QStringList parts = entry.attributes.split(u' ', Qt::SkipEmptyParts);
  static const QRegularExpression unixForm(QStringLiteral("^[-dlbcps][-rwxsStT]{9}$"));
  for (const QString& part : parts) {
    if (unixForm.match(part).hasMatch())
      return part;
  }
  const QString letters = parts.value(0);
  QString token;
  for (const QChar letter : QStringLiteral("DRHSAC"))
    token += letters.contains(letter) ? letter : u'.';
  return token;
}

QString crcToken(const QString& crc) {
  static const QRegularExpression eightHex(QStringLiteral("^[0-9A-Fa-f]{8}$"));
  return eightHex.match(crc).hasMatch() ? crc : QStringLiteral("00000000");
}

// "m3" out of "m3:17" or "v6:m3:128K AES:15:3".
QString methodToken(const QString& method) {
  static const QRegularExpression level(QStringLiteral("(?:^|[: ])(m\\d)(?:$|[: ])"));
  const QRegularExpressionMatch match = level.match(method);
  return match.hasMatch() ? match.captured(1) : QStringLiteral("-");
}

// "2.9" out of 7-Zip's "29"; RAR5 entries carry no such number.
QString versionToken(const QString& version, const QString& type) {
  if (version.size() >= 2)
    return version.chopped(1) + u'.' + version.right(1);
  return type == u"Rar5" ? QStringLiteral("5.0") : QStringLiteral("-");
}

QString entryLine(const RarEntry& entry, const QString& type, bool hideStars) {
  QString name = entry.path;
  if (hideStars)
    name.replace(u'*', u'?');
  const QString date = entry.modified.section(u' ', 0, 0);
  const QString time = entry.modified.section(u' ', 1, 1).section(u'.', 0, 0);
  const QStringList values = {
      QString::number(entry.size).rightJustified(10),
      QString::number(entry.packedSize).rightJustified(8),
      ratio(entry.packedSize, entry.size).rightJustified(5),
      date.isEmpty() ? QStringLiteral("-") : date,
      time.isEmpty() ? QStringLiteral("-") : time,
      attributesToken(entry).leftJustified(10),
      crcToken(entry.crc),
      methodToken(entry.method),
      versionToken(entry.version, type),
  };
  return (entry.encrypted ? u'*' : u' ') + name.leftJustified(kNameWidth) + QStringLiteral("  ") +
         values.join(u' ');
}

QString totalsLine(const QList<RarEntry>& entries) {
  qint64 size = 0;
  qint64 packed = 0;
  for (const RarEntry& entry : entries) {
    size += entry.size;
    packed += entry.packedSize;
  }
  return QString::number(entries.size()).rightJustified(5) + QString(13, u' ') +
         QString::number(size).rightJustified(10) + u' ' +
         QString::number(packed).rightJustified(8) + u' ' + ratio(packed, size).rightJustified(5);
}

}  // namespace

QString RarStyleListing::print(const QString& archive, const ArchiveFacts& facts) const {
  QString shownArchive = archive;
  if (hideStarsInNames)
    shownArchive.replace(u'*', u'?');
  QStringList lines = {
      QString(),
      banner,
      QStringLiteral("RARLAB's programs are not installed; Debian's free tools stand in for them."),
      QString(),
      QStringLiteral("Archive ") + shownArchive,
      QString(),
      kHeader,
      kRuler,
  };
  if (facts.passwordNeeded)
    lines << kEncryptedNames;
  for (const RarEntry& entry : facts.entries)
    lines << entryLine(entry, facts.type, hideStarsInNames);
  lines << kRuler << totalsLine(facts.entries) << QString();
  return lines.join(u'\n');
}
