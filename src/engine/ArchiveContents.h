#pragma once

#include <QList>
#include <QString>

class ToolRunner;

// What an extraction would write: every entry's path inside the archive,
// its unpacked size and whether it is encrypted, as the tools list them.
struct ContentEntry {
  QString path;
  qint64 size = 0;
  bool folder = false;
  bool encrypted = false;
  // "2026-11-23 14:07" where the tool lists it.
  QString modified;
};

struct ArchiveContents {
  QList<ContentEntry> entries;
  // The listing ran to its end and every name could be read; when not,
  // callers assume the worst (an entry may collide).
  bool complete = false;
  // The password does not open the archive's listing.
  bool wrongPassword = false;

  // The entries at these paths and everything inside them.
  QList<ContentEntry> under(const QStringList& paths) const;

  static ArchiveContents fromTechnicalListing(const QString& listing);
  // GNU tar's verbose listing in its escape quoting style.
  static ArchiveContents fromTarListing(const QByteArray& listing);
  // Lists the archive with 7-Zip, or with tar for the types tar unpacks.
  static ArchiveContents read(ToolRunner& runner, const QString& type, const QString& path,
                              const QString& passwordSwitch);
};
