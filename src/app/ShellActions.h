#pragma once

class QAction;

// The main window's menu actions that belong to the application shell
// rather than to the open archive.
struct ShellActions {
  QAction* menuPreferences = nullptr;
  QAction* btnBackup = nullptr;
  QAction* btnDMGUtil = nullptr;
  QAction* btnWeb = nullptr;
  QAction* btnCheckForUpdates = nullptr;
  QAction* mnuLatestVersionChanges = nullptr;
  QAction* btnBlog = nullptr;
  QAction* btnFacebook = nullptr;
  QAction* btnTwitter = nullptr;
  QAction* menuAbout = nullptr;
};
