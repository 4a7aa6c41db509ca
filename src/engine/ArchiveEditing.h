#pragma once

#include "engine/EngineContext.h"

#include <QObject>

class AddingWindows;

// Changing the open archive in place: deleting the selected entries and
// adding files and folders, re-listing it afterwards.
class ArchiveEditing : public QObject {
  Q_OBJECT

 public:
  ArchiveEditing(const EngineContext& context, AddingWindows& windows, QObject* parent = nullptr);

  void btnDeleteSelectedFilesFromArchive();
  void addFilesToArchive();
  void updateArchive(const QStringList& sheet, int returnCode);

 private:
  void refreshSize();

  EngineContext context_;
  AddingWindows& windows_;
};
