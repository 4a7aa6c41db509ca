#pragma once

#include "engine/OneShotExtraction.h"

#include <QWidget>

class PathLabel;
class QLabel;
class QProgressBar;

// The small window of a one-shot extraction: the archive's type icon, name,
// size and destination, a spinner while the tool runs, and "DONE". The
// quick-extract panel and the files opened from outside each have one.
class QuickExtractionWindow : public QWidget, public OneShotExtraction::Ui {
  Q_OBJECT

 public:
  explicit QuickExtractionWindow(QWidget* parent = nullptr);

  QLabel* archiveTypeIcon() const { return archiveTypeIcon_; }
  PathLabel* filename() const { return filename_; }
  QLabel* filesize() const { return filesize_; }
  PathLabel* destinationPath() const { return destinationPath_; }
  QProgressBar* progressIndicator() const { return progressIndicator_; }
  QLabel* extractionStatus() const { return extractionStatus_; }

  // Centred on the screen, above other windows.
  void orderFront();
  // Starts the spinner and shows the archive: its name, its size, its path
  // less the extension as the destination, and its type's icon (a type
  // without one keeps the icon shown before).
  void showArchive(const QString& path);
  void setSpinning(bool spinning);
  // The archive the fields show: the destination's folder and the name.
  QString archiveShown() const;

  void showDone() override;
  // Quillet quits right after, so the line goes to standard error too.
  void reportFailure(const QString& message) override;

 private:
  QLabel* archiveTypeIcon_;
  PathLabel* filename_;
  QLabel* filesize_;
  PathLabel* destinationPath_;
  QProgressBar* progressIndicator_;
  QLabel* extractionStatus_;
  QLabel* failures_;
};
