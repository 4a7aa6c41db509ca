#pragma once

#include <QString>

// What adding files to the open archive shows while it runs: the progress
// window and the options of a new archive belong to the creation side of
// the main window, which provides them.
class AddingWindows {
 public:
  virtual ~AddingWindows() = default;
  // Hides the options window of a new archive and forgets the volume size
  // chosen there, which does not carry over to adding.
  virtual void leaveCreation() = 0;
  // Shows the progress window with the archive's name and a bar of count
  // steps.
  virtual void showAdding(const QString& archiveName, int count) = 0;
  virtual void setAdded(int done) = 0;
  // Hides the progress window and makes it ready for the next job.
  virtual void hideAdding() = 0;
};
