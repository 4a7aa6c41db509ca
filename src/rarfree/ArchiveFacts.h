#pragma once

#include "rarfree/FreeTool.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

// One entry as 7-Zip's technical listing describes it.
struct RarEntry {
  QString path;
  bool folder = false;
  qint64 size = 0;
  qint64 packedSize = 0;
  QString modified;    // "2011-06-26 14:53:46.0000000"
  QString attributes;  // " -rw-r--r--", "D drwxr-xr-x", "A"
  bool encrypted = false;
  QString crc;
  QString method;   // "m3:17", "v6:m3:128K AES:15:3"
  QString version;  // "29" for RAR 2.9; RAR5 archives have none
};

// What 7-Zip reads from an archive's headers: it lists RAR and RAR5,
// including file names encrypted in RAR4, but cannot unpack RAR data.
struct ArchiveFacts {
  QString type;  // "Rar" or "Rar5"; empty when 7-Zip could not open it
  bool headersEncrypted = false;
  bool passwordNeeded = false;    // the names are encrypted and no password came
  bool passwordRejected = false;  // the names are encrypted and the password does not open them
  QString problem;                // why not everything was read; empty when all was
  QList<RarEntry> entries;
  QHash<QString, qsizetype> entryIndex;  // path -> position in entries

  bool isRar4() const { return type == u"Rar"; }
  // RAR 2.9 and later encrypt with AES, which Debian's unar cannot decrypt
  // in RAR4 archives; RAR 2.0's older cipher it can.
  bool hasRar4Aes() const;
  const RarEntry* entryAt(const QString& path) const;
};

ArchiveFacts parseArchiveFacts(const ToolOutput& sevenZip, bool passwordGiven);

// Runs "7z l -slt" on the archive (on the first volume of its set).
ArchiveFacts readArchiveFacts(const QString& archive, const std::optional<QString>& password);
