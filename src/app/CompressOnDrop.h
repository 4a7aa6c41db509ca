#pragma once

#include <QString>
#include <QStringList>

struct CompressionLevel;
class OnDropUi;
class ToolRunner;

// What packing files handed over from outside reads: the files, where the
// archive goes, and the on-drop preferences.
struct OnDropRequest {
  // The first handed file, or the path chosen in the save panel; the
  // archive goes into its folder.
  QString archiveFile;
  QStringList droppedFilesToCompress;  // full paths, in the order received
  QString method;                      // "onDropCompressionMethod"
  QString level;                       // "onDropCompressionLevel"
  // "prefUseFisrstNameOfTheArrayAsArchiveName": the archive is named after
  // the first file rather than after archiveFile.
  bool firstNameIsArchiveName = false;
  bool excludeDsStore = false;  // the preferences' chkExcludeDS_Store

  // The request with the preferences as they are stored now.
  static OnDropRequest fromPreferences(const QString& archiveFile, const QStringList& dropped,
                                       bool excludeDsStore);
};

// Packs the files handed to Quillet from outside into one new archive with
// the on-drop preferences: one tool run per file, each adding to the same
// archive, which goes into the folder of archiveFile. It runs on the GUI
// thread; every tool run keeps the event loop turning, so the progress
// window's Cancel button works meanwhile. run() returns when the job is
// done: ending the application afterwards is left to the caller.
class CompressOnDrop {
 public:
  CompressOnDrop(OnDropRequest request, ToolRunner& runner, OnDropUi& ui);

  void run();
  // Ends the tool run in progress; the next file is still added.
  void btnCancelCompression();

  // The archive's name in the folder of archiveFile, once run() has
  // settled it.
  const QString& archiveName() const { return archiveName_; }

  static QString genRandStringLengthInAppController(int length);

 private:
  QString baseName() const;
  // The collision rule: a base name that an archive of any type beside
  // archiveFile already has gets a random suffix, and the user is told.
  // The tools add to an archive that exists, so the suffix is drawn again
  // until the archive's own name is free.
  QString freeBase(const QString& base, const QString& extension);
  // False, after telling the user, when rar or arj would read a name as a
  // pattern or a list of names.
  bool toolTakesEveryName();
  void compress(const QString& file, const CompressionLevel& level);
  // Failures leave a status line; a missing program ends the tool runs.
  void runTool(const QString& program, const QStringList& arguments);
  QStringList excluding(const QString& pattern) const;
  QString inFolder(const QString& name) const;

  OnDropRequest request_;
  ToolRunner& runner_;
  OnDropUi& ui_;
  QString folder_;
  QString archiveName_;
  bool runCancelled_ = false;
  bool programMissing_ = false;
};
