#include "tools/Md5Digest.h"

#include <QStringList>

namespace Md5Digest {

ToolRun run(const QString& file) {
  // "--": a name that starts with "-" stays a name.
  return {QStringLiteral("/usr/bin/md5sum"), {QStringLiteral("--tag"), QStringLiteral("--"), file}};
}

QString unescaped(const QString& output) {
  if (!output.startsWith(u'\\'))
    return output;
  QString plain;
  plain.reserve(output.size());
  for (qsizetype at = 1; at < output.size(); ++at) {
    const QChar next = at + 1 < output.size() ? output.at(at + 1) : QChar();
    if (output.at(at) == u'\\' && (next == u'\\' || next == u'n' || next == u'r')) {
      plain += next == u'n' ? u'\n' : next == u'r' ? u'\r' : u'\\';
      ++at;
    } else {
      plain += output.at(at);
    }
  }
  return plain;
}

QString digestFrom(const QString& output, const QString& file) {
  QString digest = unescaped(output);
  digest.remove(QStringLiteral("MD5 (") + file + QStringLiteral(") = "));
  digest.remove(u'\n');
  return digest;
}

QString pieceAfterEquals(const QString& output) {
  return unescaped(output).split(QStringLiteral("= ")).value(1);
}

}  // namespace Md5Digest

QString pcls::MD5HashFile(const QString& path) {
  return Md5Digest::pieceAfterEquals(runner_.run(Md5Digest::run(path)).text());
}
