#include "create/CompressingWindow.h"

#include "platform/ResourceIcons.h"

#include "platform/WindowPlacement.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

CompressingWindow::CompressingWindow(QWidget* parent)
    : QDialog(parent),
      compressingArchiveName_(new QLabel),
      compressingLoader_(new QProgressBar),
      compressingWindowStatus_(new QLabel(QStringLiteral("Compressing..."))) {
  setObjectName(QStringLiteral("compressingWindow"));
  setWindowTitle(tr("Compressing"));
  compressingArchiveName_->setObjectName(QStringLiteral("compressingArchiveName"));
  compressingLoader_->setObjectName(QStringLiteral("compressingLoader"));
  compressingWindowStatus_->setObjectName(QStringLiteral("compressingWindowStatus"));
  QFont bold = compressingArchiveName_->font();
  bold.setBold(true);
  compressingArchiveName_->setFont(bold);
  compressingLoader_->setMinimumWidth(320);
  compressingLoader_->setTextVisible(false);

  auto* icon = new QLabel;
  icon->setPixmap(ResourceIcons::named(QStringLiteral("archive")).pixmap(48));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("btnCancelCompressing"));
  connect(buttons, &QDialogButtonBox::rejected, this, &CompressingWindow::cancelPressed);

  auto* layout = new QGridLayout(this);
  layout->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
  layout->addWidget(compressingArchiveName_, 0, 1);
  layout->addWidget(compressingLoader_, 1, 1);
  layout->addWidget(compressingWindowStatus_, 2, 1);
  layout->addWidget(buttons, 3, 0, 1, 2);
}

void CompressingWindow::centreAndShow() {
  WindowPlacement::centreAndShow(this);
}
