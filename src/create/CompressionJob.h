#pragma once

#include "create/CreatedArchives.h"
#include "create/JobSettings.h"

#include <QString>
#include <QStringList>

#include <functional>

class JobUi;
class ToolRunner;
struct ToolRun;

// Everything a compression job reads, taken from the windows when it
// starts, so the worker never touches a widget.
struct CompressionRequest {
  JobSettings settings;
  QString itemToCompress;  // the save path without extension, or "unknown"
  QStringList items;       // the full paths of the selection list's rows
  bool everyItem = false;
  bool passwordProtected = false;
  QString password;
  QString passwordConfirmation;
  bool split = false;
  QString splitSizeText;
  bool selfExtracting = false;
  QString notes;
  bool upload = false;
  bool excludeDsStore = false;
  QString startFolder;  // Quillet's current folder when the job starts
  QString stubBundle;   // the self-extracting stub, sfxmodule.app
  QString homeFolder;
};

// Turns the selection list into an archive (or one per item) by running
// one tool per item, then makes it self-extracting, splits it or adds the
// note. The job keeps its own current folder and hands it to every tool
// run, so the main window may move Quillet's meanwhile.
class CompressionJob {
 public:
  CompressionJob(CompressionRequest request, ToolRunner& runner, JobUi& ui,
                 std::function<bool()> cancelled);

  void run();
  // The split switch as the job left it.
  const QString& splitVolumesSize() const { return settings_.splitVolumesSize; }

  static QString genRandStringLength(int length);

 private:
  void settleName();
  // base, whose path in the archive's folder is path, or base with a suffix
  // when the name is taken; written is the file the tool will write.
  QString freeBase(const QString& base, const QString& path, const QString& written = QString());
  bool checkPassword();
  void runProtected(const QString& passwordSwitch);
  void compressProtected(const QString& passwordSwitch);
  void runUnprotected();
  void compressUnprotected();
  // False, after telling the user, when the format's tool would not store
  // every name as it is.
  bool toolTakesEveryName();
  bool takesEveryNameLiterally(const QString& program);
  void rarRows(const QString& passwordSwitch, bool perItemFolders);
  void sevenZipRows(const QStringList& leading);
  void settleSharedNameInChosenFolder();
  void gzipOrBzip2();
  void rarSplitStep();
  void rarNoteStep();
  void sfxStep();
  void splitStep();
  void endStep();
  bool lhaCanStoreEveryName();
  // The made archive's file: one more the report will name.
  void noteMade(const QString& name);
  // A step turned the archive named made into these files; none drops it.
  void replaceMade(const QString& made, const QStringList& paths);
  // The files beside the archive whose names are its name, a dot and more.
  QStringList namedAfterArchive() const;
  // The volumes a split step wrote: what is named after the archive now
  // and was not before.
  QStringList newVolumes(const QStringList& before) const;
  // A step of Quillet's own failed: one status-bar line, nothing created.
  void failStep(const QString& message);
  void reportCreated();

  // Runs a tool in the job's folder; false when it failed, so that nothing
  // is deleted on its word. A missing program ends the job's tool runs.
  bool runTool(const QString& program, const QStringList& arguments);
  QString inFolder(const QString& name) const;
  void eachRow(const std::function<void(const QString& item)>& runItem);
  // The exclusion switch, when .DS_Store files are left out.
  QStringList excluding(const QString& pattern) const;
  QString itemArchiveName(const QString& item, const QString& extension);

  CompressionRequest request_;
  JobSettings settings_;
  ToolRunner& runner_;
  JobUi& ui_;
  std::function<bool()> cancelled_;
  QString folder_;
  QString archiveName_;
  bool programMissing_ = false;
  bool toolFailed_ = false;
  CreatedArchives made_;
};
