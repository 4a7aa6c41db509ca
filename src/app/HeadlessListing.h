#pragma once

#include "engine/OpeningWindow.h"

#include <QString>

class ToolRunner;

// "quillet --list": opens and lists an archive with the main window's own
// code and prints each row as tab-separated fields, for scripts.
class HeadlessListing : public OpeningWindow {
 public:
  enum ExitStatus { Listed = 0, Unreadable = 2, PasswordNeeded = 3, ProgramMissing = 4 };

  explicit HeadlessListing(ToolRunner& runner) : runner_(runner) {}
  int run(const QString& archive, const QString& password);

  bool passwordPanelVisible() const override { return false; }
  void showPasswordPanel() override { passwordAsked_ = true; }
  void showRows(const ArchiveEntries& rows) override;
  void reportProblem(const ToolProblem& problem) override;

 private:
  ToolRunner& runner_;
  bool passwordAsked_ = false;
  bool programMissing_ = false;
};
