#pragma once

#include "engine/EngineContext.h"

#include <QObject>

class AddingWindows;
class Dialogs;

// Changing the open archive in place: deleting the selected entries and
// adding files and folders, re-listing it afterwards.
class ArchiveEditing : public QObject {
  Q_OBJECT

 public:
  // The alert for an archive whose type cannot be changed in place.
  static void alertNotUpdatable(Dialogs& dialogs);
  ArchiveEditing(const EngineContext& context, AddingWindows& windows, QObject* parent = nullptr);

  void btnDeleteSelectedFilesFromArchive();
  void addFilesToArchive();
  void updateArchive(const QStringList& sheet, int returnCode);

 private:
  void refreshSize();

  EngineContext context_;
  AddingWindows& windows_;
};
