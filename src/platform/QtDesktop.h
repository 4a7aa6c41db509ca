#pragma once

#include "platform/Desktop.h"

// The freedesktop services through Qt and xdg-open.
class QtDesktop : public Desktop {
 public:
  void showFolder(const QString& folder) override;
  void openFile(const QString& path) override;
  void openUrl(const QUrl& url) override;
  void beep() override;
  bool moveToTrash(const QString& path) override;
  QIcon iconForExtension(const QString& extension) override;
  QIcon iconForFile(const QString& path) override;
};
