#pragma once

#include "engine/EngineContext.h"

#include <QObject>

class FilePreviewPanel;

// The preview side panel of the main window: shows the selected entry of a
// zip or 7z archive when it is an image, walks to the next or previous
// image entry, saves an entry into a folder or opens it with its default
// application. Each extraction goes into Quillet's own temporary folder.
class FilePreview : public QObject {
  Q_OBJECT

 public:
  // The panel becomes the main window's preview side panel.
  FilePreview(const EngineContext& context, QObject* parent = nullptr);

  FilePreviewPanel* panel() const { return panel_; }

  void btnGeneratePreview();
  void btnNext();
  void btnPrevious();
  void btnExtractFile();
  void btnOpenWithFinder();

 private:
  // True, after the alert, for the archive types that are not previewed.
  bool refused();
  QString firstSelectedName() const;
  void walk(int step);
  void preview(const QString& name);
  // Extracts the entry into the folder for zip and 7z archives; false when
  // a name that cannot be trusted stopped it.
  bool extractEntry(const QString& name, const QString& folder);
  // False, after an alert, when saving the entry into the folder would
  // replace a file that the user did not choose, or that the password
  // cannot replace with the entry's data.
  bool mayReplace(const QString& name, const QString& chosen, const QString& folder);
  bool ensureTemporaryFolder();
  int currentTableRow() const;
  QString nameAtTableRow(int row) const;
  void selectTableRow(int row);
  void updateButtons();
  void startSpinner();
  void stopSpinner();

  EngineContext context_;
  FilePreviewPanel* panel_;
};
