#include "rarfree/Console.h"

#include <cstdio>

namespace Console {
namespace {

void write(std::FILE* stream, const QString& line) {
  const QByteArray bytes = (line + u'\n').toUtf8();
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
  std::fflush(stream);
}

}  // namespace

void say(const QString& line) {
  write(stdout, line);
}

void sayReason(const QString& reason) {
  write(stderr, reason);
}

}  // namespace Console
