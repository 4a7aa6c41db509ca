#pragma once

#include "platform/ToolRunner.h"

#include <QList>
#include <QString>

#include <chrono>
#include <functional>
#include <optional>

class Desktop;
class Dialogs;
class QDateTime;

// Extracting one archive that was handed over from outside, once and in
// place, after which Quillet quits. Two routes share it: files opened from
// the file manager (FromOutside) and the quick-extract panel (QuickPanel).
// Their vectors and the steps after the run differ a little; both probe for
// a password first, and both check before the run that no existing file can
// be lost.
//
// A caller shows its extraction window (the Ui), fills it, and calls
// extract() with the archive's full path:
//  - Done: the tool ran, the window says "DONE", and the route's steps after
//    the run (folder, beep, Trash, "__MACOSX") were taken; quit, or go on
//    with the next file.
//  - Refused: an alert said why; nothing was extracted and no step taken.
//    The route ends as after Done.
//  - NeedsPassword: nothing ran. Show the password dialog; its OK calls
//    extractWithPassword() with the archive the window shows, which answers
//    Done or Refused.
// Quitting and the windows stay with the caller; alerts go through Dialogs,
// the folder, the beep and the Trash through Desktop.
class OneShotExtraction {
 public:
  enum class Route { FromOutside, QuickPanel };
  enum class Outcome {
    Done,           // the tool ran and the steps after it were taken
    NeedsPassword,  // the probe found encryption; nothing ran
    Refused,        // an alert said why; nothing was extracted
  };
  enum class AfterStep { ShowFolder, Beep, BeepAndWait, Trash, RemoveMacosxFolder };

  // The settings an extraction reads, all compared with "YES".
  struct Preferences {
    bool openDestination = false;    // "openDestinationAfterExtraction"
    bool overwrite = false;          // "overwriteOnExtraction"
    bool playSound = false;          // "playSoundWhenDone"
    bool trash = false;              // "trashAfterExtracting"
    bool removeMacosx = false;       // "autoremoveMACOSXfolder"
    bool surroundingFolder = false;  // "CreateSurroundingFolderBeforeExtraction"

    static Preferences read();
  };

  // What the extraction window shows of a run.
  class Ui {
   public:
    virtual ~Ui() = default;
    // The tool has exited: the spinner stops and the status says "DONE".
    virtual void showDone() = 0;
    // One line saying what failed or what was removed.
    virtual void reportFailure(const QString& message) = 0;
  };

  struct Services {
    ToolRunner& runner;
    Dialogs& dialogs;
    Desktop& desktop;
    Ui& ui;
    // The pause after a beep, so that it is heard before Quillet quits.
    std::function<void(std::chrono::milliseconds)> wait = waitTurningEventLoop;
  };

  static constexpr std::chrono::milliseconds kBeepPause{800};

  OneShotExtraction(Route route, Services services);

  // Probes, checks, runs the tool in the route's folder (Quillet's current
  // folder moves there) and takes the steps after it. The archive is a
  // full path.
  Outcome extract(const QString& archive);
  // The same with the password typed in the dialog, always in the
  // archive's own folder.
  Outcome extractWithPassword(const QString& archive, const QString& password);

  // The extensions that open the quick-extract panel.
  static bool isQuickPanelType(const QString& extension);
  // The extensions that make a list from outside an archive list.
  static bool isArchiveFromOutside(const QString& extension);

  // Where the tool extracts: the archive's folder, or on FromOutside the
  // surrounding folder (the path less its extension) when it is wanted.
  static QString workingDirectory(Route route, const QString& archive,
                                  const Preferences& preferences);
  // The listing that tells whether a password is needed; none for types
  // that are not probed.
  static std::optional<ToolRun> passwordProbe(const QString& archive);
  static bool probeFindsEncryption(const QString& type, const QString& output);
  static ToolRun extraction(Route route, const QString& archive, const Preferences& preferences);
  // The same on both routes.
  static ToolRun extractionWithPassword(const QString& archive, const QString& password,
                                        bool overwrite);
  static QList<AfterStep> afterSteps(Route route, bool withPassword, const QString& type,
                                     const Preferences& preferences);

  // Waits while the event loop keeps turning; user input waits too.
  static void waitTurningEventLoop(std::chrono::milliseconds duration);

 private:
  bool refusesNames(const QString& program, const QStringList& names);
  Outcome runChecked(ToolRun run, const QString& archive, const QString& passwordSwitch,
                     const QList<AfterStep>& steps, bool overwrite);
  void removeEscapingLinks(const QString& folder, const QDateTime& since);
  void take(const QList<AfterStep>& steps, const QString& archive, bool extracted);

  Route route_;
  Services services_;
};
