#pragma once

#include <QString>

// One row of the level table: the level switch of each tool and the text
// the level slider shows for it.
struct CompressionLevel {
  QString sevenZip;
  QString rar;
  QString arj;
  QString lha;
  QString info;
};

// The switches of the next compression, one set for the whole process. The
// window's controls write them; a job takes a copy when it starts.
struct JobSettings {
  static inline const QString kZip = QStringLiteral("-tzip");
  static inline const QString kSevenZip = QStringLiteral("-t7z");
  static inline const QString kTar = QStringLiteral("-ttar");
  static inline const QString kGzip = QStringLiteral("-tgzip");
  static inline const QString kBzip2 = QStringLiteral("-tbzip2");
  // Not switches: markers that make the job run another tool than 7za.
  static inline const QString kRar = QStringLiteral("rar");
  static inline const QString kArj = QStringLiteral("arj");
  static inline const QString kLha = QStringLiteral("lha");

  QString compressionMethod = kZip;
  QString zipCompressionLevel;
  QString rarCompressionLevel;
  QString arjCompressionLevel;
  QString lhaCompressionLevel;
  QString archivePass = QStringLiteral("-p{}");
  QString splitVolumesSize = QStringLiteral("-v");
  QString splitVolumesSizeType = QStringLiteral("m");
  bool isPasswordProtected = false;

  static JobSettings& shared();

  // The start values, with the levels of the "DefaultCompressionLevel"
  // preference ("Low" when it is absent or unknown).
  void init();
  void useLevel(const CompressionLevel& level);

  // The slider's six positions, 0 (store) to 5 (ultra).
  static const CompressionLevel* levelAt(int position);
  // The level a stored default names.
  static const CompressionLevel& levelNamed(const QString& preference);
  // The archive's extension for a method (gzip and bzip2 are made as a tar).
  static QString extensionFor(const QString& method);
};
