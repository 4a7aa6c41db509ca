#pragma once

#include "engine/OpenedArchive.h"
#include "engine/listing/LhaListing.h"
#include "engine/listing/SltListing.h"
#include "platform/ToolRunner.h"

#include <optional>

class EntryIcons;
class OpeningWindow;

// Opening an archive and listing it: records the archive, probes it for a
// password, removes "__MACOSX" when the preference says so, and turns the
// listing tool's output into rows. The main window and the headless
// listing both run exactly this.
class ArchiveOpener {
 public:
  ArchiveOpener(ToolRunner& runner, EntryIcons& icons, OpeningWindow& window);

  const OpenedArchive& archive() const { return archive_; }
  OpenedArchive& archive() { return archive_; }
  // Whether a tool lists the open archive's entries.
  bool listsContents() const { return listingRun().has_value(); }

  void open(const QString& path);
  void passwordEntered(const QString& password);
  void passwordPanelClosed();
  void fillListBoxWithArchiveContent();
  void deleteFileFromArchiveWithName(const QString& name);

 private:
  enum class Probe { Clear, Protected, ProgramMissing };

  void record(const QString& path);
  void removeMacosxFolder();
  Probe probePassword();
  // Runs a tool and reports what went wrong; std::nullopt when the program
  // could not run at all.
  std::optional<ToolResult> runTool(const ToolRun& run, bool reportFailure = true);
  std::optional<ToolRun> listingRun() const;
  static std::optional<SltType> sltTypeOf(const QString& type);
  ArchiveEntries listFromWholeOutput(const ToolRun& run);
  ArchiveEntries listWhileToolPrints(ToolRun run, SltType type);
  LhaVersion lhaVersion();

  ToolRunner& runner_;
  EntryIcons& icons_;
  OpeningWindow& window_;
  OpenedArchive archive_;
  std::optional<LhaVersion> lhaVersion_;
};
