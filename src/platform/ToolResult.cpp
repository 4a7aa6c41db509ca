#include "platform/ToolRunner.h"

#include <QList>

QString ToolResult::text() const {
  return output.isValidUtf8() ? QString::fromUtf8(output) : QString();
}

QString ToolResult::lastErrorLine() const {
  const QList<QByteArray> lines = errors.split('\n');
  for (auto line = lines.crbegin(); line != lines.crend(); ++line) {
    const QByteArray trimmed = line->trimmed();
    if (!trimmed.isEmpty())
      return QString::fromUtf8(trimmed);
  }
  return {};
}
