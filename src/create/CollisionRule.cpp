#include "create/CollisionRule.h"

#include <QFileInfo>
#include <QStringList>

namespace CollisionRule {
namespace {

const QStringList kTakenExtensions = {".rar", ".zip",    ".7z",      ".lha", ".arj",
                                      ".tar", ".tar.gz", ".tar.bz2", ".app"};
constexpr int kSuffixLength = 4;

}  // namespace

bool occupied(const QString& path) {
  const QFileInfo info(path);
  return info.exists() || info.isSymLink();
}

bool taken(const QString& pathWithoutExtension, const QString& written) {
  return (!written.isEmpty() && occupied(written)) ||
         std::any_of(kTakenExtensions.cbegin(), kTakenExtensions.cend(),
                     [&](const QString& type) { return occupied(pathWithoutExtension + type); });
}

QString suffixed(const QString& base, const std::function<QString(int length)>& random,
                 const std::function<bool(const QString& candidate)>& inUse) {
  QString candidate;
  do {
    candidate = base + u'_' + random(kSuffixLength);
  } while (inUse(candidate));
  return candidate;
}

}  // namespace CollisionRule
