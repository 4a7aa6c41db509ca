#pragma once

#include "app/OnDropUi.h"

#include <QDialog>

class Dialogs;
class QLabel;
class QProgressBar;
class ToolRunner;
struct OnDropRequest;

// The progress of packing the files handed over from outside, with its
// Cancel button, which stops the file being added and goes on with the
// next one.
class OnDropCompressingWindow : public QDialog, public OnDropUi {
  Q_OBJECT

 public:
  explicit OnDropCompressingWindow(Dialogs& dialogs, QWidget* parent = nullptr);

  // Runs the job with this window as its face and returns when it is done.
  void compress(const OnDropRequest& request, ToolRunner& runner);

  QLabel* compressingArchiveName() const { return compressingArchiveName_; }
  QProgressBar* compressingLoader() const { return compressingLoader_; }
  QProgressBar* compressionSpin() const { return compressionSpin_; }
  QLabel* compressingWindowStatus() const { return compressingWindowStatus_; }

  // Escape and the close button cancel like the Cancel button; the window
  // stays.
  void reject() override { emit cancelPressed(); }

  // OnDropUi
  void showCompressingWindow() override;
  void setCompressionSpinning(bool spinning) override;
  void setCompressingArchiveName(const QString& name) override;
  void setProgressRange(int maximum, int value) override;
  void setProgressValue(int value) override;
  void hideCompressingWindow() override;
  void alert(const QString& title, const QString& message) override;
  void reportFailure(const QString& message) override;

 signals:
  void cancelPressed();

 private:
  void centre();

  Dialogs& dialogs_;
  QLabel* compressingArchiveName_;
  QProgressBar* compressingLoader_;
  QProgressBar* compressionSpin_;
  QLabel* compressingWindowStatus_;
};
