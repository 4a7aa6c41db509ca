#include "tools/FilePreviewPanel.h"

#include <QApplication>
#include <QFormLayout>
#include <QGridLayout>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace {

QPushButton* button(const char* objectName, const QString& text, const char* theme,
                    QStyle::StandardPixmap fallback, const QString& toolTip) {
  auto* created = new QPushButton(
      QIcon::fromTheme(QString::fromLatin1(theme), QApplication::style()->standardIcon(fallback)),
      text);
  created->setObjectName(QString::fromLatin1(objectName));
  created->setToolTip(toolTip);
  return created;
}

}  // namespace

ImagePreviewField::ImagePreviewField(QWidget* parent) : QLabel(parent) {
  setObjectName(QStringLiteral("imagePreviewField"));
  setAlignment(Qt::AlignCenter);
  setWordWrap(true);
  setFrameShape(QFrame::StyledPanel);
  setMinimumSize(220, 180);
  // The image follows the panel's size instead of setting it.
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Ignored);
  setBackgroundRole(QPalette::Base);
  setAutoFillBackground(true);
  setText(QObject::tr("Select an image entry and press Preview."));
}

void ImagePreviewField::setImage(const QPixmap& image) {
  image_ = image;
  showScaled();
}

void ImagePreviewField::resizeEvent(QResizeEvent* event) {
  QLabel::resizeEvent(event);
  showScaled();
}

void ImagePreviewField::showScaled() {
  if (image_.isNull()) {
    setPixmap(QPixmap());
    return;
  }
  const QSize room = contentsRect().size() - QSize(8, 8);
  const bool fits = image_.width() <= room.width() && image_.height() <= room.height();
  setPixmap(fits ? image_ : image_.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

FilePreviewPanel::FilePreviewPanel(QWidget* parent)
    : QWidget(parent),
      imagePreviewField_(new ImagePreviewField),
      previewedName_(new QLabel),
      fileSizeField_(new QLabel),
      previewLoadingIndicator_(new QProgressBar),
      generatePreviewButton_(button("btnGeneratePreview", tr("Pre&view"), "view-preview",
                                    QStyle::SP_FileDialogContentsView,
                                    tr("Show the selected entry if it is an image"))),
      previousButton_(button("btnPrevious", tr("&Previous"), "go-previous", QStyle::SP_ArrowBack,
                             tr("Show the previous image entry"))),
      nextButton_(button("btnNext", tr("&Next"), "go-next", QStyle::SP_ArrowForward,
                         tr("Show the next image entry"))),
      extractFileButton_(button("btnExtractFile", tr("&Save…"), "document-save",
                                QStyle::SP_DialogSaveButton,
                                tr("Save the selected entry into a folder"))),
      openWithButton_(button("btnOpenWithFinder", tr("&Open"), "document-open",
                             QStyle::SP_DialogOpenButton,
                             tr("Open the selected entry with its default application"))) {
  setObjectName(QStringLiteral("filePreviewPanel"));
  previewedName_->setObjectName(QStringLiteral("previewedName"));
  previewedName_->setWordWrap(true);
  previewedName_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  fileSizeField_->setObjectName(QStringLiteral("fileSizeField"));
  fileSizeField_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  previewLoadingIndicator_->setObjectName(QStringLiteral("previewLoadingIndicator"));
  previewLoadingIndicator_->setRange(0, 0);
  previewLoadingIndicator_->setTextVisible(false);
  previewLoadingIndicator_->setMaximumHeight(8);
  QSizePolicy keepSpace = previewLoadingIndicator_->sizePolicy();
  keepSpace.setRetainSizeWhenHidden(true);
  previewLoadingIndicator_->setSizePolicy(keepSpace);
  previewLoadingIndicator_->hide();

  auto* facts = new QFormLayout;
  facts->addRow(tr("Name:"), previewedName_);
  facts->addRow(tr("Size:"), fileSizeField_);

  auto* buttons = new QGridLayout;
  buttons->addWidget(previousButton_, 0, 0);
  buttons->addWidget(generatePreviewButton_, 0, 1);
  buttons->addWidget(nextButton_, 0, 2);
  buttons->addWidget(extractFileButton_, 1, 0, 1, 2);
  buttons->addWidget(openWithButton_, 1, 2);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(imagePreviewField_, 1);
  layout->addWidget(previewLoadingIndicator_);
  layout->addLayout(facts);
  layout->addLayout(buttons);
}
