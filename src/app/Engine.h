#pragma once

#include "app/ShellActions.h"
#include "engine/ArchiveOpener.h"
#include "engine/MainWindowUi.h"
#include "engine/OpeningWindow.h"
#include "engine/listing/CachedEntryIcons.h"

#include <QObject>
#include <QTimer>

class ArchiveCreation;
class ArchiveDrops;
class converter;
class FilePreview;
class MD5GeneratorClass;
class backupEngine;
class DMGUtility;
class ClassEmail;
class classFTP;
class ArchiveEditing;
class ArchiveTest;
class CreateTab;
class EntryOpening;
class Extraction;
class Desktop;
class Dialogs;
class PasswordPanel;
class ToolRunner;

// The main window's controller: the opened archive, its listing and the
// tabs around it.
class Engine : public QObject, public OpeningWindow {
  Q_OBJECT

 public:
  // The job runner serves the compression job, which runs beside the
  // window's own tool runs.
  Engine(ToolRunner& runner, ToolRunner& jobRunner, Dialogs& dialogs, Desktop& desktop,
         QObject* parent = nullptr);
  ~Engine() override;

  const MainWindowUi& ui() const { return ui_; }
  CreateTab* createTab() const { return createTab_; }
  const ShellActions& shell() const { return shell_; }
  PasswordPanel* enterPasswordDlg() const { return enterPasswordDlg_; }
  const OpenedArchive& archive() const { return opener_.archive(); }
  ArchiveCreation* creation() const { return creation_; }
  classFTP* ftp() const { return ftp_; }
  ClassEmail* email() const { return email_; }
  Extraction* extraction() const { return extraction_; }
  ArchiveTest* test() const { return test_; }
  ArchiveEditing* editing() const { return editing_; }
  EntryOpening* entryOpening() const { return entryOpening_; }
  ArchiveDrops* drops() const { return drops_; }
  converter* archiveConverter() const { return converter_; }
  FilePreview* filePreview() const { return filePreview_; }
  MD5GeneratorClass* md5Generator() const { return md5Generator_; }
  backupEngine* backup() const { return backup_; }
  DMGUtility* dmgUtility() const { return dmgUtility_; }

  void btnOpenAction();
  void btnSwitchToCreate();
  // Opens the converter on the open archive.
  void btnConvert();
  // The open panel's end: returnCode 1 is OK.
  void openDialog(const QStringList& sheet, int returnCode);
  void btnPasswordProtectedDlgOK();
  void btnClosePasswordDlg();
  void fillListBoxWithArchiveContent();
  void tabSwitchObserver();

  // OpeningWindow
  void startSpinner() override;
  void stopSpinner() override;
  void showArchive(const OpenedArchive& archive) override;
  void noteRecentDocument(const QString& path) override;
  bool passwordPanelVisible() const override;
  void showPasswordPanel() override;
  void hidePasswordPanel() override;
  void showRows(const ArchiveEntries& rows) override;
  void reportProblem(const ToolProblem& problem) override;

 private:
  // Enables the actions that would act now: the archive's own ones need an
  // open archive, those on entries a selection too.
  void updateActions();
  // The toolbar's Add Files: into the archive, or on the Create tab into the
  // new archive's list.
  void addFiles();
  void rebuildRecentMenu();

  Dialogs& dialogs_;
  CreateTab* createTab_;
  ShellActions shell_;
  MainWindowUi ui_;
  PasswordPanel* enterPasswordDlg_;
  CachedEntryIcons icons_;
  ArchiveOpener opener_;
  ArchiveCreation* creation_;
  classFTP* ftp_;
  ClassEmail* email_;
  Extraction* extraction_;
  ArchiveTest* test_;
  ArchiveEditing* editing_;
  EntryOpening* entryOpening_;
  ArchiveDrops* drops_;
  converter* converter_;
  FilePreview* filePreview_;
  MD5GeneratorClass* md5Generator_;
  backupEngine* backup_;
  DMGUtility* dmgUtility_;
  QTimer tabSwitchTimer_;
};
