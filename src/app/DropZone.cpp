#include "app/DropZone.h"

#include "app/DropPaths.h"
#include "platform/Dialogs.h"
#include "platform/PreferencesStore.h"
#include "platform/ResourceIcons.h"

#include <QDragEnterEvent>
#include <QIcon>
#include <QLabel>
#include <QMimeData>
#include <QVBoxLayout>

namespace {

constexpr int kDropImageSize = 96;
constexpr int kFrameMargin = 8;

// Only copying is offered to the source: the dropped files stay where
// they are.
bool offersCopy(const QDropEvent* event) {
  return event->possibleActions().testFlag(Qt::CopyAction);
}

}  // namespace

DropZone::DropZone(Dialogs& dialogs, QWidget* parent)
    : QDockWidget(tr("Drop zone"), parent),
      dialogs_(dialogs),
      area_(new QWidget),
      imageLabel_(new QLabel) {
  setObjectName(QStringLiteral("DropZone"));
  setFeatures(QDockWidget::NoDockWidgetFeatures);
  setAcceptDrops(true);

  auto* layout = new QVBoxLayout(area_);
  imageLabel_->setObjectName(QStringLiteral("dropZoneImage"));
  imageLabel_->setAlignment(Qt::AlignCenter);
  setBGImage(ResourceIcons::named(QStringLiteral("dropzone.png")));
  auto* hint = new QLabel(tr("Drag files and folders here to add them to the new archive."));
  hint->setAlignment(Qt::AlignCenter);
  hint->setWordWrap(true);
  layout->addStretch();
  layout->addWidget(imageLabel_);
  layout->addWidget(hint);
  layout->addStretch();
  area_->setObjectName(QStringLiteral("dropZoneArea"));
  area_->setMinimumWidth(184);
  area_->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Expanding);
  setHighlighted(false);
  // The dashed frame keeps clear of the window's edges.
  auto* frame = new QWidget;
  auto* frameLayout = new QVBoxLayout(frame);
  frameLayout->setContentsMargins(kFrameMargin, 0, kFrameMargin, kFrameMargin);
  frameLayout->addWidget(area_);
  setWidget(frame);
}

void DropZone::setBGImage(const QIcon& image) {
  imageLabel_->setPixmap(image.pixmap(kDropImageSize));
}

void DropZone::dragEnterEvent(QDragEnterEvent* event) {
  if (!offersCopy(event)) {
    event->ignore();
    return;
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
  setHighlighted(true);
}

void DropZone::dragMoveEvent(QDragMoveEvent* event) {
  if (!offersCopy(event)) {
    event->ignore();
    return;
  }
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void DropZone::dragLeaveEvent(QDragLeaveEvent* event) {
  setHighlighted(false);
  event->accept();
}

// A drag without file names (an image or a piece of text) is taken while
// it moves but fails here. The alert waits until the drop is over, so that
// the file manager is not left holding its drag.
void DropZone::dropEvent(QDropEvent* event) {
  setHighlighted(false);
  const QStringList paths = localPathsOf(event->mimeData());
  if (paths.isEmpty()) {
    event->ignore();
    QMetaObject::invokeMethod(
        this,
        [this] {
          dialogs_.alert(QStringLiteral("Paste Error"),
                         QStringLiteral("Sorry, but the past operation failed"),
                         QStringLiteral("OK"));
        },
        Qt::QueuedConnection);
    return;
  }
  PreferencesStore::setList(QStringLiteral("droppedFiles"), paths);
  event->setDropAction(Qt::CopyAction);
  event->accept();
}

void DropZone::setHighlighted(bool highlighted) {
  area_->setStyleSheet(
      highlighted ? QStringLiteral("#dropZoneArea { border: 2px dashed palette(highlight); "
                                   "border-radius: 12px; background: palette(alternate-base); }")
                  : QStringLiteral("#dropZoneArea { border: 2px dashed palette(mid); "
                                   "border-radius: 12px; }"));
}
