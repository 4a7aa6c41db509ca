#pragma once

#include "engine/EngineContext.h"
#include "engine/ExtractionGuard.h"
#include "engine/LongRun.h"
#include "platform/Dialogs.h"

#include <QObject>
#include <QStringList>

#include <optional>

class QDateTime;

class ExtractionDialog;

// Extracting the open archive: all of it into a chosen folder, or the
// selected rows; and the option checkboxes that go with it.
class Extraction : public QObject {
  Q_OBJECT

 public:
  Extraction(const EngineContext& context, QObject* parent = nullptr);

  ExtractionDialog* extractionDialog() const { return dialog_; }
  const QString& choosenPath() const { return choosenPath_; }

  void btnExtractAction();
  void openDialogForExtraction(const QStringList& sheet, int returnCode);
  void btnExtractSelected();
  void btnOpenArchiveFolder();
  // Each stores its checkbox as "YES" or "NO" under its key at once.
  void checkOpenDestinationAfterExtraction();
  void checkTrashAfterExtracting();
  void checkOverwriteOnExtraction();
  void checkPlaySoundWhenDone();

 private:
  Dialogs::OpenPanel destinationPanel(const QString& title) const;
  void showDialog();
  // Whether an entry collides with an existing file; nothing, after telling
  // the user, when the extraction would lose a file.
  std::optional<bool> guard(const ExtractionGuard::Request& request);
  void removeEscapingLinks(const QString& destination, const QDateTime& since);
  void finish(const QString& folderToShow, bool show, bool sound);
  // The listing's file rows, folders not counted.
  int filesInArchive() const;
  void reportExtracted(int count, const QString& destination);

  EngineContext context_;
  ExtractionDialog* dialog_;
  std::optional<LongRun> running_;
  QStringList file_;
  QString choosenPath_;
};
