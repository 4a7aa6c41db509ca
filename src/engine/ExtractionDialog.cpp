#include "engine/ExtractionDialog.h"

#include "platform/ResourceIcons.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>

ExtractionDialog::ExtractionDialog(QWidget* parent)
    : QDialog(parent), fileName_(new QLabel), fileSize_(new QLabel), animation_(new QProgressBar) {
  setObjectName(QStringLiteral("extractionDialog"));
  setWindowTitle(tr("Extracting"));
  setWindowModality(Qt::ApplicationModal);
  fileName_->setObjectName(QStringLiteral("extractionDlgFileNameTitle"));
  fileSize_->setObjectName(QStringLiteral("extractionDlgFileSizeTitle"));
  animation_->setObjectName(QStringLiteral("extractionAnimation"));
  fileName_->setTextFormat(Qt::PlainText);
  fileName_->setWordWrap(true);
  fileName_->setMinimumWidth(360);
  QFont bold = fileName_->font();
  bold.setBold(true);
  fileName_->setFont(bold);
  animation_->setRange(0, 0);
  animation_->setTextVisible(false);

  auto* icon = new QLabel;
  icon->setPixmap(
      ResourceIcons::themed(QStringLiteral("archive-extract"), QStringLiteral("action-extract"))
          .pixmap(48));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("btnCancelExtraction"));
  connect(buttons, &QDialogButtonBox::rejected, this, &ExtractionDialog::cancelPressed);

  auto* layout = new QGridLayout(this);
  layout->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
  layout->addWidget(fileName_, 0, 1);
  layout->addWidget(fileSize_, 1, 1);
  layout->addWidget(animation_, 2, 1);
  layout->addWidget(buttons, 3, 0, 1, 2);
}
