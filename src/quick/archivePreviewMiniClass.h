#pragma once

#include "engine/listing/LhaListing.h"
#include "platform/ApplicationServices.h"
#include "quick/MiniEntryIcons.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

class archivePreviewWindowClass;
class contextMenuWindowClass;
struct ToolResult;
struct ToolRun;

// The mini archive browser: a small floating list of the quick-extract
// panel's archive beside the panel, where entries can be added, removed and
// extracted before going back to the panel. It never ends the application.
class archivePreviewMiniClass : public QObject {
  Q_OBJECT

 public:
  using Services = ApplicationServices;

  // filepath is the panel's hidden path field, read whenever it is needed.
  archivePreviewMiniClass(Services services, contextMenuWindowClass& contextWindow,
                          const QString& filepath, QObject* parent = nullptr);
  ~archivePreviewMiniClass() override;

  archivePreviewWindowClass* miniArchiveWindow() const { return miniArchiveWindow_.get(); }

  void btnContextMenuOpenMiniArchiveList();
  void fillListBoxWithArchiveContent();
  void btnAdd();
  void updateArchive(const QStringList& sheet, int returnCode);
  void btnRemove();
  void deleteFileFromArchiveWithName(const QString& name);
  void btnExtract();
  void btnQuit();

 private:
  ToolResult runReported(const ToolRun& run);
  QStringList selectedNames() const;
  QStringList allNames() const;
  bool refuses(const QString& unsafeName);
  bool refusesListedNames(const QStringList& chosen);
  LhaVersion lhaVersion();

  Services services_;
  contextMenuWindowClass& contextWindow_;
  const QString& filepath_;
  std::unique_ptr<archivePreviewWindowClass> miniArchiveWindow_;
  MiniEntryIcons icons_;
  std::optional<LhaVersion> lhaVersion_;
  // The last listing showed encrypted entries.
  bool encrypted_ = false;
};
