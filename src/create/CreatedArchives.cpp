#include "create/CreatedArchives.h"

#include "engine/OperationStatus.h"

#include <QCoreApplication>
#include <QFileInfo>

namespace {

QString tr(const char* text) {
  return QCoreApplication::translate("CreatedArchives", text);
}

}  // namespace

QString CreatedArchives::text() const {
  if (paths.isEmpty())
    return QString();
  const QString first = OperationStatus::placeText(paths.first());
  if (volumes && paths.size() > 1)
    return tr("Archive created: %1 in %2 volumes").arg(first).arg(paths.size());
  if (paths.size() == 1)
    return tr("Archive created: %1").arg(first);
  const QString count = OperationStatus::counted(paths.size(), tr("archive"), tr("archives"));
  const QString place = folder();
  return place.isEmpty() ? tr("%1 created").arg(count)
                         : tr("%1 created in %2").arg(count, OperationStatus::placeText(place));
}

QString CreatedArchives::folder() const {
  QString shared;
  for (const QString& path : paths) {
    const QString folder = QFileInfo(path).absolutePath();
    if (!shared.isEmpty() && folder != shared)
      return QString();
    shared = folder;
  }
  return shared;
}
