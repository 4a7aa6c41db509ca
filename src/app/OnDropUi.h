#pragma once

#include <QString>

// What compressing dropped files needs from the progress window and the
// user.
class OnDropUi {
 public:
  virtual ~OnDropUi() = default;
  // Centres and shows the progress window and starts its progress bar,
  // unless the window is up already.
  virtual void showCompressingWindow() = 0;
  virtual void setCompressionSpinning(bool spinning) = 0;
  virtual void setCompressingArchiveName(const QString& name) = 0;
  virtual void setProgressRange(int maximum, int value) = 0;
  virtual void setProgressValue(int value) = 0;
  // Orders the window out, makes the progress bar determinate again and
  // resets the status to "Compressing...".
  virtual void hideCompressingWindow() = 0;
  // A modal alert with the button "OK".
  virtual void alert(const QString& title, const QString& message) = 0;
  // One line saying what failed.
  virtual void reportFailure(const QString& message) = 0;
};
