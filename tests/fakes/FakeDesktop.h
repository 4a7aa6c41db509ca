#pragma once

#include "platform/Desktop.h"

#include <QStringList>

// Records what would have been shown, opened, trashed or sounded; icons are
// asked for by extension and counted.
class FakeDesktop : public Desktop {
 public:
  void showFolder(const QString& folder) override { shownFolders << folder; }
  void openFile(const QString& path) override { openedFiles << path; }
  void openUrl(const QUrl& url) override { openedUrls << url.toString(); }
  void beep() override { ++beeps; }
  bool moveToTrash(const QString& path) override {
    trashed << path;
    return true;
  }
  QIcon iconForExtension(const QString& extension) override {
    iconRequests << extension;
    return QIcon();
  }

  QIcon iconForFile(const QString& path) override {
    fileIconRequests << path;
    return QIcon();
  }

  QStringList shownFolders;
  QStringList fileIconRequests;
  QStringList openedFiles;
  QStringList openedUrls;
  QStringList trashed;
  QStringList iconRequests;
  int beeps = 0;
};
