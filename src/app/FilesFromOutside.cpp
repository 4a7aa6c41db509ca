#include "app/FilesFromOutside.h"

#include "app/CompressOnDrop.h"
#include "app/OnDropCompressingWindow.h"
#include "engine/ArchiveType.h"
#include "engine/PathText.h"
#include "platform/Dialogs.h"
#include "platform/PreferencesStore.h"
#include "quick/PathLabel.h"
#include "quick/QuickExtractionWindow.h"
#include "quick/QuickPasswordDialog.h"
#include "quick/contextMenuClass.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QStandardPaths>

#include <cstdio>

FilesFromOutside::FilesFromOutside(Services services, QMainWindow& mainWindow,
                                   const QCheckBox& excludeDsStore, QObject* parent)
    : QObject(parent),
      services_(std::move(services)),
      mainWindow_(mainWindow),
      excludeDsStore_(excludeDsStore),
      extractWindow_(std::make_unique<QuickExtractionWindow>()),
      enterPasswordDlg_(std::make_unique<QuickPasswordDialog>()),
      extraction_(OneShotExtraction::Route::FromOutside,
                  {services_.runner, services_.dialogs, services_.desktop, *extractWindow_}) {
  connect(enterPasswordDlg_.get(), &QuickPasswordDialog::okPressed, this,
          &FilesFromOutside::btnPasswordDlgOK);
  connect(enterPasswordDlg_.get(), &QuickPasswordDialog::cancelPressed, this,
          &FilesFromOutside::btnPasswordDlgCancel);
}

FilesFromOutside::~FilesFromOutside() = default;

FilesFromOutside::Route FilesFromOutside::routeOf(const QString& firstExtension,
                                                  bool customContextMenu) {
  if (customContextMenu && OneShotExtraction::isQuickPanelType(firstExtension))
    return Route::QuickPanel;
  if (OneShotExtraction::isArchiveFromOutside(firstExtension))
    return Route::Extract;
  return Route::Compress;
}

void FilesFromOutside::openFiles(const QStringList& files) {
  if (files.isEmpty())
    return;
  // The counter is read before it is reset: a second list is probed by the
  // file the first one ended on.
  const QString probe = PathText::pathExtension(files.value(currentObject_, files.first()));
  const Route route =
      routeOf(probe, PreferencesStore::isYes(QStringLiteral("enableCustomContextMenu")));
  if (route == Route::QuickPanel) {
    showQuickPanel(files.first());
    return;
  }
  lastObject_ = static_cast<int>(files.size());
  for (currentObject_ = 0; currentObject_ < files.size(); ++currentObject_) {
    if (route == Route::Compress)
      compress(files);
    else
      extract(files.at(currentObject_));
  }
  if (!enterPasswordDlg_->isVisible())
    services_.terminate();
  else if (services_.unattended)
    endUnanswered(tr("%1 is protected and its password cannot be asked for without a display; "
                     "it was not extracted.")
                      .arg(enterPasswordDlg_->passwordProtectedDroppedFileNameLabel()->path()));
}

void FilesFromOutside::endUnanswered(const QString& why) {
  std::fprintf(stderr, "quillet: %s\n", qUtf8Printable(why));
  services_.terminate();
}

void FilesFromOutside::showQuickPanel(const QString& archive) {
  if (services_.unattended) {
    endUnanswered(tr("the quick-extract panel needs a display; %1 was not extracted.")
                      .arg(PathText::lastPathComponent(archive)));
    return;
  }
  contextMenu_ = std::make_unique<contextMenuClass>(services_);
  contextMenu_->awakeFromNib();
  contextMenu_->setHiddenFileName(archive);
  contextMenu_->fadeInPanel();
  mainWindow_.hide();
}

// The whole list goes into one archive, once; compressOnDrop ends the
// application.
void FilesFromOutside::compress(const QStringList& files) {
  if (filesDroppedOnce_)
    return;
  filesDroppedOnce_ = true;
  QString archiveFile = files.first();
  if (!PreferencesStore::isYes(QStringLiteral("prefUseFisrstNameOfTheArrayAsArchiveName"))) {
    Dialogs::SavePanel panel;
    panel.startFolder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
    panel.fileName = QStringLiteral("untitled");
    archiveFile = services_.dialogs.chooseToSave(nullptr, panel);
    if (archiveFile.isEmpty())
      return;
  }
  mainWindow_.hide();
  OnDropCompressingWindow window(services_.dialogs);
  window.compress(OnDropRequest::fromPreferences(archiveFile, files, excludeDsStore_.isChecked()),
                  services_.runner);
  services_.terminate();
}

void FilesFromOutside::extract(const QString& archive) {
  mainWindow_.hide();
  extractWindow_->orderFront();
  extractWindow_->showArchive(archive);
  if (extraction_.extract(archive) != OneShotExtraction::Outcome::NeedsPassword)
    return;
  if (enterPasswordDlg_->isVisible())
    return;
  extractWindow_->hide();
  enterPasswordDlg_->presentFor(PathText::lastPathComponent(archive));
}

void FilesFromOutside::btnPasswordDlgOK() {
  extractWindow_->setSpinning(true);
  extractWindow_->orderFront();
  enterPasswordDlg_->hide();
  extraction_.extractWithPassword(extractWindow_->archiveShown(),
                                  enterPasswordDlg_->passwordTextField()->text());
  extractWindow_->setSpinning(false);
  if (currentObject_ == lastObject_)
    services_.terminate();
}

void FilesFromOutside::btnPasswordDlgCancel() {
  services_.terminate();
}
