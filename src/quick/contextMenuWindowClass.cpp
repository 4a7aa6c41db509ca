#include "quick/contextMenuWindowClass.h"

#include "platform/ResourceIcons.h"
#include "quick/FloatingWindow.h"
#include "quick/PanelGeometry.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QMouseEvent>
#include <QPushButton>
#include <QScreen>

namespace {

constexpr int kIconSize = 32;
constexpr int kNameWidth = 200;

}  // namespace

contextMenuWindowClass::contextMenuWindowClass(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      icon_(new QLabel),
      name_(new QLabel),
      extract_(new QPushButton(ResourceIcons::themed(QStringLiteral("archive-extract"),
                                                     QStringLiteral("action-extract")),
                               tr("&Extract Here"))),
      cancel_(new QPushButton(tr("Cancel"))),
      browse_(new QPushButton(
          ResourceIcons::themed(QStringLiteral("view-list-details"), QStringLiteral("document")),
          tr("&Browse…"))) {
  setObjectName(QStringLiteral("contextWindow"));
  setWindowTitle(tr("Quick Extract"));
  setWindowOpacity(kOpacity);

  extract_->setObjectName(QStringLiteral("btnDecompress"));
  extract_->setDefault(true);
  extract_->setShortcut(QKeySequence(Qt::Key_Return));
  cancel_->setObjectName(QStringLiteral("btnCancel"));
  cancel_->setShortcut(QKeySequence::Cancel);
  browse_->setObjectName(QStringLiteral("btnContextMenuOpenMiniArchiveList"));
  browse_->setToolTip(tr("List the archive's entries"));
  icon_->setPixmap(
      ResourceIcons::themed(QStringLiteral("package-x-generic"), QStringLiteral("archive"))
          .pixmap(kIconSize));
  name_->setTextFormat(Qt::PlainText);
  name_->setFixedWidth(kNameWidth);
  QFont bold = name_->font();
  bold.setBold(true);
  name_->setFont(bold);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(browse_);
  buttons->addStretch();
  buttons->addWidget(cancel_);
  buttons->addWidget(extract_);
  auto* layout = new QGridLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->setContentsMargins(14, 12, 14, 12);
  layout->addWidget(icon_, 0, 0);
  layout->addWidget(name_, 0, 1);
  layout->addLayout(buttons, 1, 0, 1, 2);
}

void contextMenuWindowClass::showArchive(const QString& name, const QIcon& icon) {
  name_->setText(name_->fontMetrics().elidedText(name, Qt::ElideMiddle, kNameWidth));
  name_->setToolTip(name);
  if (!icon.isNull())
    icon_->setPixmap(icon.pixmap(kIconSize));
}

void contextMenuWindowClass::mousePressEvent(QMouseEvent* event) {
  setInitialLocation(event->position());
}

void contextMenuWindowClass::mouseMoveEvent(QMouseEvent* event) {
  if (!(event->buttons() & Qt::LeftButton))
    return;
  move(PanelGeometry::dragged(pos(), initialLocation_, event->position(),
                              screen()->availableGeometry()));
}

void contextMenuWindowClass::paintEvent(QPaintEvent*) {
  FloatingWindow::paintPanel(this);
}
