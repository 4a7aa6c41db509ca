#pragma once

#include <QIcon>
#include <QString>
#include <QUrl>

// The desktop's services: the file manager, the default applications, the
// trash, the sound and the icons of file types.
class Desktop {
 public:
  virtual ~Desktop() = default;
  // Shows the folder in the file manager.
  virtual void showFolder(const QString& folder) = 0;
  virtual void openFile(const QString& path) = 0;
  virtual void openUrl(const QUrl& url) = 0;
  virtual void beep() = 0;
  virtual bool moveToTrash(const QString& path) = 0;
  // The icon the desktop shows for files with this extension.
  virtual QIcon iconForExtension(const QString& extension) = 0;
  // The icon the desktop shows for this file or folder.
  virtual QIcon iconForFile(const QString& path) = 0;
};
