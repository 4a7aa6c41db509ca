#include "platform/QtDesktop.h"

#include "platform/ResourceIcons.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFile>
#include <QMimeDatabase>
#include <QProcess>
#include <QTimer>

namespace {

// xdg-open may stay until the file manager closes; the caller goes on
// after this long and the file manager keeps running.
constexpr int kShowFolderWaitMs = 5000;

QIcon fallbackIconFor(const QMimeType& type) {
  const QString name = type.name();
  if (name.startsWith(u"image/"))
    return ResourceIcons::named(QStringLiteral("image"));
  if (name.startsWith(u"audio/"))
    return ResourceIcons::named(QStringLiteral("audio"));
  if (name.startsWith(u"video/"))
    return ResourceIcons::named(QStringLiteral("video"));
  if (name.startsWith(u"text/"))
    return ResourceIcons::named(QStringLiteral("text"));
  if (type.genericIconName() == u"package-x-generic")
    return ResourceIcons::named(QStringLiteral("archive"));
  if (type.genericIconName() == u"application-x-executable")
    return ResourceIcons::named(QStringLiteral("executable"));
  return ResourceIcons::named(QStringLiteral("document"));
}

}  // namespace

void QtDesktop::showFolder(const QString& folder) {
  auto* opener = new QProcess;
  QObject::connect(opener, &QProcess::finished, opener, &QObject::deleteLater);
  QObject::connect(opener, &QProcess::errorOccurred, opener,
                   [opener](QProcess::ProcessError error) {
                     if (error == QProcess::FailedToStart)
                       opener->deleteLater();
                   });
  QEventLoop loop;
  QObject::connect(opener, &QProcess::finished, &loop, &QEventLoop::quit);
  QObject::connect(opener, &QProcess::errorOccurred, &loop, &QEventLoop::quit);
  QTimer::singleShot(kShowFolderWaitMs, &loop, &QEventLoop::quit);
  opener->start(QStringLiteral("xdg-open"), {folder});
  loop.exec(QEventLoop::ExcludeUserInputEvents);
}

void QtDesktop::openFile(const QString& path) {
  QDesktopServices::openUrl(QUrl::fromLocalFile(path));
}

void QtDesktop::openUrl(const QUrl& url) {
  QDesktopServices::openUrl(url);
}

void QtDesktop::beep() {
  QApplication::beep();
}

bool QtDesktop::moveToTrash(const QString& path) {
  return QFile::moveToTrash(path);
}

QIcon QtDesktop::iconForExtension(const QString& extension) {
  static const QMimeDatabase database;
  const QMimeType type = extension.isEmpty()
                             ? database.mimeTypeForName(QStringLiteral("application/octet-stream"))
                             : database.mimeTypeForFile(QStringLiteral("x.") + extension,
                                                        QMimeDatabase::MatchExtension);
  const QIcon fallback = fallbackIconFor(type);
  return QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName(), fallback));
}

QIcon QtDesktop::iconForFile(const QString& path) {
  static const QMimeDatabase database;
  const QMimeType type = database.mimeTypeForFile(path);
  const QIcon fallback = type.name() == u"inode/directory"
                             ? ResourceIcons::named(QStringLiteral("folder"))
                             : fallbackIconFor(type);
  return QIcon::fromTheme(type.iconName(), QIcon::fromTheme(type.genericIconName(), fallback));
}
