#pragma once

#include "create/CreatedArchives.h"
#include "create/JobUi.h"

#include <QStringList>

// Records what the compression job shows, one line per call, and answers
// its questions from a script.
class RecordingJobUi : public JobUi {
 public:
  void orderOutCreateWindow() override { calls << "order out create window"; }
  void setCompressionSpinning(bool spinning) override {
    calls << (spinning ? "spin" : "stop spin");
  }
  void setCompressingArchiveName(const QString& name) override { calls << "name " + name; }
  void showCompressingWindow() override { calls << "show compressing window"; }
  void hideCompressingWindow() override { calls << "hide compressing window"; }
  void setProgressRange(int maximum, int value) override {
    calls << QString("progress %1/%2").arg(value).arg(maximum);
  }
  void setProgressValue(int value) override { calls << QString("progress %1").arg(value); }
  void setProgressIndeterminate() override { calls << "progress indeterminate"; }
  void setStatus(const QString& status) override { calls << "status " + status; }
  void setFileContent(const QString& text) override { calls << "content " + text; }
  void selectRow(int row) override { calls << QString("select %1").arg(row); }
  void toggleCreateWindow() override {
    createWindowVisible = !createWindowVisible;
    calls << "toggle create window";
  }
  void bringCreateWindowForwardIfHidden() override {
    if (!createWindowVisible)
      calls << "bring create window forward";
    createWindowVisible = true;
  }
  void alert(const QString& title, const QString& message) override {
    alerts << title + ": " + message;
  }
  QString chooseArchivesFolder() override {
    calls << "choose folder";
    return archivesFolder;
  }
  void uploadFileToFTP(const QString& archiveName, const QString& folder) override {
    uploads << archiveName;
    uploadFolders << folder;
  }
  void reportFailure(const QString& message, const QString&) override { failures << message; }
  void reportCreated(const CreatedArchives& archives) override { created << archives.text(); }

  QStringList calls;
  QStringList alerts;
  QStringList uploads;
  QStringList uploadFolders;
  QStringList failures;
  QStringList created;
  QString archivesFolder;
  bool createWindowVisible = true;
};
