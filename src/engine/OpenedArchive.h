#pragma once

#include <QString>

// The state of the one archive open in the main window.
struct OpenedArchive {
  static inline const QString kNoPassword = QStringLiteral("-p{}");

  QString filepath;
  QString filename;
  QString archivetype;
  QString filesize;
  QString crc32;
  // The password switch handed to 7za and the rar tools.
  QString archivePass = kNoPassword;
  // Whether the password probe of opening found an encrypted entry or
  // encrypted headers.
  bool encrypted = false;

  bool isOpen() const { return !filepath.isEmpty(); }
};
