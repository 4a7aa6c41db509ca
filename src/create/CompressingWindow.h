#pragma once

#include <QDialog>

class QLabel;
class QProgressBar;

// The progress of a compression job, with its Cancel button.
class CompressingWindow : public QDialog {
  Q_OBJECT

 public:
  explicit CompressingWindow(QWidget* parent);

  QLabel* compressingArchiveName() const { return compressingArchiveName_; }
  QProgressBar* compressingLoader() const { return compressingLoader_; }
  QLabel* compressingWindowStatus() const { return compressingWindowStatus_; }
  void centreAndShow();
  // Escape cancels the job like the Cancel button; the window stays.
  void reject() override { emit cancelPressed(); }

 signals:
  void cancelPressed();

 private:
  QLabel* compressingArchiveName_;
  QProgressBar* compressingLoader_;
  QLabel* compressingWindowStatus_;
};
