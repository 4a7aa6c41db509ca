#include "app/DropZone.h"

#include "platform/Dialogs.h"
#include "platform/PreferencesStore.h"
#include "platform/ResourceIcons.h"

#include <QDragEnterEvent>
#include <QLabel>
#include <QMimeData>
#include <QVBoxLayout>

namespace {

constexpr int kDropIconSize = 96;

QStringList localPathsOf(const QMimeData* data) {
  QStringList paths;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile())
      paths << url.toLocalFile();
  }
  return paths;
}

}  // namespace

DropZone::DropZone(Dialogs& dialogs, QWidget* parent)
    : QDockWidget(tr("Drop zone"), parent), dialogs_(dialogs), area_(new QWidget) {
  setObjectName(QStringLiteral("DropZone"));
  setFeatures(QDockWidget::NoDockWidgetFeatures);
  setAcceptDrops(true);

  auto* layout = new QVBoxLayout(area_);
  auto* image = new QLabel;
  image->setPixmap(ResourceIcons::named(QStringLiteral("dropzone.png")).pixmap(kDropIconSize));
  image->setAlignment(Qt::AlignCenter);
  auto* hint = new QLabel(tr("Drag files and folders here to add them to the new archive."));
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  layout->addStretch();
  layout->addWidget(image);
  layout->addWidget(hint);
  layout->addStretch();
  area_->setObjectName(QStringLiteral("dropZoneArea"));
  area_->setMinimumWidth(200);
  area_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  setHighlighted(false);
  setWidget(area_);
}

void DropZone::dragEnterEvent(QDragEnterEvent* event) {
  if (!(event->possibleActions() & Qt::CopyAction)) {
    event->ignore();
    return;
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
  setHighlighted(true);
}

void DropZone::dragMoveEvent(QDragMoveEvent* event) {
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void DropZone::dragLeaveEvent(QDragLeaveEvent* event) {
  setHighlighted(false);
  event->accept();
}

void DropZone::dropEvent(QDropEvent* event) {
  setHighlighted(false);
  const QStringList paths = localPathsOf(event->mimeData());
  if (paths.isEmpty()) {
    dialogs_.alert(QStringLiteral("Paste Error"),
                   QStringLiteral("Sorry, but the past operation failed"), QStringLiteral("OK"));
    event->ignore();
    return;
  }
  PreferencesStore::setList(QStringLiteral("droppedFiles"), paths);
  event->acceptProposedAction();
}

void DropZone::setHighlighted(bool highlighted) {
  area_->setStyleSheet(
      highlighted ? QStringLiteral("#dropZoneArea { border: 2px dashed palette(highlight); "
                                   "border-radius: 12px; background: palette(alternate-base); }")
                  : QStringLiteral("#dropZoneArea { border: 2px dashed palette(mid); "
                                   "border-radius: 12px; }"));
}
