#include "engine/EscapingLinks.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryFile>

#include <sys/stat.h>

namespace EscapingLinks {
namespace {

// The path with every existing part resolved; the parts that do not exist
// yet (a dangling link's target) are appended as written.
QString resolved(const QString& path) {
  QString existing = QDir::cleanPath(path);
  QString rest;
  while (!existing.isEmpty() && !QFileInfo::exists(existing)) {
    rest = u'/' + QFileInfo(existing).fileName() + rest;
    const QString parent = QFileInfo(existing).path();
    if (parent == existing)
      break;
    existing = parent;
  }
  return QDir::cleanPath(QFileInfo(existing).canonicalFilePath() + rest);
}

// When the link itself was made or changed; QFileInfo would give its
// target's times.
QDateTime linkChangeTime(const QString& link) {
  struct stat status {};
  if (::lstat(QFile::encodeName(link).constData(), &status) != 0)
    return {};
  return QDateTime::fromMSecsSinceEpoch(qint64(status.st_ctim.tv_sec) * 1000 +
                                        status.st_ctim.tv_nsec / 1000000);
}

bool isInside(const QString& path, const QString& root) {
  return path == root || path.startsWith(root == u"/" ? root : root + u'/');
}

}  // namespace

bool leadsOutside(const QString& link, const QString& root) {
  const QString target = QFileInfo(link).symLinkTarget();
  return !isInside(resolved(target), resolved(root));
}

QDateTime now(const QString& folder) {
  QTemporaryFile marker(QDir(folder).filePath(QStringLiteral(".quillet-now-XXXXXX")));
  if (!marker.open())
    return QDateTime::currentDateTime();
  const QDateTime stamped = linkChangeTime(marker.fileName());
  return stamped.isValid() ? stamped : QDateTime::currentDateTime();
}

QStringList removeNewerThan(const QString& root, const QDateTime& since) {
  QStringList removed;
  QDirIterator walk(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden | QDir::System,
                    QDirIterator::Subdirectories);
  while (walk.hasNext()) {
    const QString path = walk.next();
    if (!walk.fileInfo().isSymLink() || linkChangeTime(path) < since)
      continue;
    if (leadsOutside(path, root) && QFile::remove(path))
      removed << path;
  }
  return removed;
}

}  // namespace EscapingLinks
