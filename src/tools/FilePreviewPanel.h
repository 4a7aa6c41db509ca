#pragma once

#include <QLabel>
#include <QPixmap>
#include <QWidget>

class QProgressBar;
class QPushButton;

// Shows an image as large as it fits, never larger than it is.
class ImagePreviewField : public QLabel {
 public:
  explicit ImagePreviewField(QWidget* parent = nullptr);
  // A null image clears the view.
  void setImage(const QPixmap& image);
  const QPixmap& image() const { return image_; }

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void showScaled();

  QPixmap image_;
};

// The preview side panel of the main window: the image, its name and size,
// a spinner and the buttons.
class FilePreviewPanel : public QWidget {
  Q_OBJECT

 public:
  explicit FilePreviewPanel(QWidget* parent = nullptr);

  ImagePreviewField* imagePreviewField() const { return imagePreviewField_; }
  QLabel* previewedName() const { return previewedName_; }
  QLabel* fileSizeField() const { return fileSizeField_; }
  QProgressBar* previewLoadingIndicator() const { return previewLoadingIndicator_; }
  QPushButton* generatePreviewButton() const { return generatePreviewButton_; }
  QPushButton* previousButton() const { return previousButton_; }
  QPushButton* nextButton() const { return nextButton_; }
  QPushButton* extractFileButton() const { return extractFileButton_; }
  QPushButton* openWithButton() const { return openWithButton_; }

 private:
  ImagePreviewField* imagePreviewField_;
  QLabel* previewedName_;
  QLabel* fileSizeField_;
  QProgressBar* previewLoadingIndicator_;
  QPushButton* generatePreviewButton_;
  QPushButton* previousButton_;
  QPushButton* nextButton_;
  QPushButton* extractFileButton_;
  QPushButton* openWithButton_;
};
