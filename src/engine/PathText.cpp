#include "engine/PathText.h"

#include <climits>

namespace PathText {
namespace {

QStringView withoutTrailingSlashes(QStringView path) {
  while (path.size() > 1 && path.endsWith(u'/'))
    path.chop(1);
  return path;
}

char16_t codeAt(QStringView text, qsizetype i) {
  return text[i].unicode();
}

char16_t codeAt(QByteArrayView text, qsizetype i) {
  return static_cast<unsigned char>(text[i]);
}

template <typename Text>
int leadingInteger(Text text) {
  qsizetype i = 0;
  while (i < text.size() && QChar(codeAt(text, i)).isSpace())
    ++i;
  bool negative = false;
  if (i < text.size() && (codeAt(text, i) == u'+' || codeAt(text, i) == u'-')) {
    negative = codeAt(text, i) == u'-';
    ++i;
  }
  long long value = 0;
  for (; i < text.size() && codeAt(text, i) >= u'0' && codeAt(text, i) <= u'9'; ++i) {
    value = value * 10 + (codeAt(text, i) - u'0');
    if (value > static_cast<long long>(INT_MAX) + 1)
      break;
  }
  if (negative)
    return value > static_cast<long long>(INT_MAX) ? INT_MIN : static_cast<int>(-value);
  return value > INT_MAX ? INT_MAX : static_cast<int>(value);
}

}  // namespace

QString lastPathComponent(const QString& path) {
  const QStringView trimmed = withoutTrailingSlashes(path);
  if (trimmed == u"/")
    return QStringLiteral("/");
  return trimmed.mid(trimmed.lastIndexOf(u'/') + 1).toString();
}

QString pathExtension(const QString& path) {
  const QString last = lastPathComponent(path);
  const qsizetype dot = last.lastIndexOf(u'.');
  if (dot <= 0)
    return {};
  return last.mid(dot + 1);
}

QString deletingLastPathComponent(const QString& path) {
  const QStringView trimmed = withoutTrailingSlashes(path);
  const qsizetype slash = trimmed.lastIndexOf(u'/');
  if (slash < 0)
    return {};
  if (slash == 0)
    return QStringLiteral("/");
  return trimmed.left(slash).toString();
}

QString deletingPathExtension(const QString& path) {
  const QString extension = pathExtension(path);
  if (extension.isEmpty())
    return withoutTrailingSlashes(path).toString();
  return withoutTrailingSlashes(path).toString().chopped(extension.size() + 1);
}

int intValue(QStringView text) {
  return leadingInteger(text);
}

int intValue(QByteArrayView text) {
  return leadingInteger(text);
}

}  // namespace PathText
