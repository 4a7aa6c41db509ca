#pragma once

#include <QMimeData>
#include <QStringList>
#include <QUrl>

// The local files and folders a drag carries; other URLs are passed over.
inline QStringList localPathsOf(const QMimeData* data) {
  QStringList paths;
  if (!data)
    return paths;
  for (const QUrl& url : data->urls()) {
    if (url.isLocalFile())
      paths << url.toLocalFile();
  }
  return paths;
}
