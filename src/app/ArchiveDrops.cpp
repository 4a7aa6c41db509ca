#include "app/ArchiveDrops.h"

#include "app/DropPaths.h"
#include "engine/ArchiveType.h"
#include "platform/Dialogs.h"

#include <QDropEvent>
#include <QFileInfo>
#include <QMimeData>
#include <QUrl>
#include <QWidget>

namespace {

bool isArchive(const QString& path) {
  return QFileInfo(path).isFile() &&
         ArchiveType::openableExtensions().contains(ArchiveType::ofPath(path));
}

}  // namespace

ArchiveDrops::ArchiveDrops(QWidget* target, Dialogs& dialogs, Actions actions, QObject* parent)
    : QObject(parent), dialogs_(dialogs), actions_(std::move(actions)) {
  target->setAcceptDrops(true);
  target->installEventFilter(this);
}

bool ArchiveDrops::dropped(const QStringList& paths) {
  if (paths.isEmpty())
    return false;
  if (paths.size() == 1 && isArchive(paths.first())) {
    actions_.open(paths.first());
    return true;
  }
  if (!actions_.archiveOpen())
    return false;
  const QString question =
      paths.size() == 1
          ? tr("Add “%1” to %2?").arg(QFileInfo(paths.first()).fileName(), actions_.archiveName())
          : tr("Add %1 items to %2?").arg(paths.size()).arg(actions_.archiveName());
  if (!dialogs_.ask(tr("Add to the archive"), question, tr("Add")))
    return false;
  actions_.add(paths);
  return true;
}

bool ArchiveDrops::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::DragEnter:
    case QEvent::DragMove: {
      auto* drag = static_cast<QDropEvent*>(event);
      // The table's own rows dragged back in are no drop.
      if (drag->source() || localPathsOf(drag->mimeData()).isEmpty())
        return false;
      drag->acceptProposedAction();
      return true;
    }
    case QEvent::Drop: {
      auto* drop = static_cast<QDropEvent*>(event);
      if (drop->source())
        return false;
      if (dropped(localPathsOf(drop->mimeData())))
        drop->acceptProposedAction();
      return true;
    }
    default:
      return QObject::eventFilter(watched, event);
  }
}
