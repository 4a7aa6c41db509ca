#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

// The progress panel of an extraction, with a Cancel button that ends the
// running tool. It keeps the rest of Quillet still while it is up.
class ExtractionDialog : public QDialog {
  Q_OBJECT

 public:
  explicit ExtractionDialog(QWidget* parent);

  QLabel* extractionDlgFileNameTitle() const { return fileName_; }
  QLabel* extractionDlgFileSizeTitle() const { return fileSize_; }
  QProgressBar* extractionAnimation() const { return animation_; }
  void reject() override { emit cancelPressed(); }

 signals:
  void cancelPressed();

 private:
  QLabel* fileName_;
  QLabel* fileSize_;
  QProgressBar* animation_;
};
