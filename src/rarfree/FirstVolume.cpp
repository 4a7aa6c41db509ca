#include "rarfree/FirstVolume.h"

#include <QFileInfo>
#include <QRegularExpression>

namespace {

// "name.part03.rar" -> "name.part01.rar"; "name.r00" -> "name.rar".
QString firstOfTheName(const QString& archive) {
  static const QRegularExpression numbered(QStringLiteral(R"(^(.*\.part)(\d+)(\.rar)$)"),
                                           QRegularExpression::CaseInsensitiveOption);
  static const QRegularExpression oldStyle(QStringLiteral(R"(^(.*\.)r\d\d$)"),
                                           QRegularExpression::CaseInsensitiveOption);
  if (const QRegularExpressionMatch match = numbered.match(archive); match.hasMatch()) {
    const QString number = match.captured(2);
    return match.captured(1) + QStringLiteral("1").rightJustified(number.size(), u'0') +
           match.captured(3);
  }
  if (const QRegularExpressionMatch match = oldStyle.match(archive); match.hasMatch())
    return match.captured(1) + QStringLiteral("rar");
  return archive;
}

}  // namespace

QString firstVolumeOf(const QString& archive) {
  const QString first = firstOfTheName(archive);
  return QFileInfo(first).isFile() ? first : archive;
}
