#pragma once

#include <QIcon>
#include <QList>
#include <QString>

// One row of an opened archive's listing. "---" stands where a value is
// not shown.
struct ArchiveEntry {
  QString name;
  QIcon fileIcon;
  QString originalSize;
  QString packedSize;
  QString crc32;
  QString dateModified;
};

using ArchiveEntries = QList<ArchiveEntry>;

inline const QString kNotShown = QStringLiteral("---");
