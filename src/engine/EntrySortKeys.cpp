#include "engine/EntrySortKeys.h"

#include <QDateTime>
#include <QLocale>

#include <array>

namespace EntrySortKeys {

qint64 bytesOf(const QString& sizeText) {
  const qsizetype space = sizeText.lastIndexOf(u' ');
  if (space <= 0)
    return -1;
  const QStringView unit = QStringView(sizeText).sliced(space + 1);
  bool ok = false;
  const double amount = QStringView(sizeText).first(space).toDouble(&ok);
  if (!ok)
    return -1;
  if (unit == u"B")
    return static_cast<qint64>(amount);
  if (unit == u"KB")
    return static_cast<qint64>(amount * 1024);
  if (unit == u"MB")
    return static_cast<qint64>(amount * 1024 * 1024);
  if (unit == u"GB")
    return static_cast<qint64>(amount * 1024 * 1024 * 1024);
  return -1;
}

namespace {

constexpr qint64 kMsPerDay = 86400000;
constexpr qint64 kEpochJulianDay = 2440588;

// The digits at [from, from + count) as a number; -1 when one is no digit.
int digitsAt(QStringView text, qsizetype from, qsizetype count) {
  int value = 0;
  for (qsizetype i = from; i < from + count; ++i) {
    const char16_t c = text[i].unicode();
    if (c < u'0' || c > u'9')
      return -1;
    value = value * 10 + (c - u'0');
  }
  return value;
}

// "yyyy-MM-dd HH:mm:ss", the form most listings use, read without the
// cost of a general date parser (it matters at 100,000 rows).
std::optional<qint64> isoTimeOf(QStringView text) {
  if (text.size() < 19 || text[4] != u'-' || text[7] != u'-' || text[10] != u' ' ||
      text[13] != u':' || text[16] != u':')
    return std::nullopt;
  const QDate date(digitsAt(text, 0, 4), digitsAt(text, 5, 2), digitsAt(text, 8, 2));
  const int hours = digitsAt(text, 11, 2);
  const int minutes = digitsAt(text, 14, 2);
  const int seconds = digitsAt(text, 17, 2);
  if (!date.isValid() || hours < 0 || minutes < 0 || seconds < 0)
    return std::nullopt;
  return (date.toJulianDay() - kEpochJulianDay) * kMsPerDay +
         ((hours * 60 + minutes) * 60 + seconds) * 1000LL;
}

}  // namespace

std::optional<qint64> timeOf(const QString& dateText) {
  if (const std::optional<qint64> iso = isoTimeOf(dateText))
    return iso;
  // Fractions of a second some tools print add nothing to the order.
  const QString text = dateText.section(u'.', 0, 0).size() >= 16 ? dateText.section(u'.', 0, 0)
                                                                 : dateText.simplified();
  static const std::array<QString, 8> formats{
      QStringLiteral("yyyy-MM-dd HH:mm:ss"), QStringLiteral("yyyy-MM-dd HH:mm"),
      QStringLiteral("dd-MM-yy HH:mm"),      QStringLiteral("yy-MM-dd HH:mm:ss"),
      QStringLiteral("dd-MM-yyyy HH:mm"),    QStringLiteral("MMM.d yyyy"),
      QStringLiteral("MMM.d HH:mm"),         QStringLiteral("yyyy-MM-dd"),
  };
  const QLocale c = QLocale::c();
  for (const QString& format : formats) {
    QDateTime time = c.toDateTime(text, format);
    if (!time.isValid())
      continue;
    // Two-digit years are read as this century and the last.
    if (format.startsWith(u"yy-") || format.contains(u"-yy "))
      if (time.date().year() < 1970)
        time = time.addYears(100);
    time.setTimeSpec(Qt::UTC);
    return time.toMSecsSinceEpoch();
  }
  return std::nullopt;
}

QSet<QString> folderNames(const ArchiveEntries& entries) {
  QSet<QString> folders;
  for (const ArchiveEntry& entry : entries) {
    QStringView name = entry.name;
    if (name.endsWith(u'/'))
      folders.insert(entry.name);
    name.chop(1);
    for (qsizetype slash = name.lastIndexOf(u'/'); slash > 0; slash = name.lastIndexOf(u'/')) {
      name = name.first(slash);
      const QString folder = name.toString();
      if (folders.contains(folder))
        break;
      folders.insert(folder);
    }
  }
  return folders;
}

}  // namespace EntrySortKeys
