#include "engine/Extraction.h"

#include "engine/ArchiveCommands.h"
#include "engine/ArchiveOpener.h"
#include "engine/ArchiveType.h"
#include "engine/EntriesModel.h"
#include "engine/EscapingLinks.h"
#include "engine/ExtractionDialog.h"
#include "engine/MainWindowUi.h"
#include "engine/OperationStatus.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/PreferencesStore.h"

#include <QCheckBox>
#include <QDateTime>
#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLabel>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>

namespace {

constexpr int kPanelOk = 1;

void storeOption(const QCheckBox* option, const QString& key) {
  PreferencesStore::setYes(key, option->isChecked());
}

}  // namespace

Extraction::Extraction(const EngineContext& context, QObject* parent)
    : QObject(parent), context_(context), dialog_(new ExtractionDialog(context.ui.mainWindow)) {
  const MainWindowUi& ui = context.ui;
  connect(ui.btnExtractAction, &QAction::triggered, this, &Extraction::btnExtractAction);
  connect(ui.btnExtractSelected, &QAction::triggered, this, &Extraction::btnExtractSelected);
  connect(ui.btnOpenArchiveFolder, &QAction::triggered, this, &Extraction::btnOpenArchiveFolder);
  connect(dialog_, &ExtractionDialog::cancelPressed, this, [this] { context_.runner.cancel(); });
  connect(ui.chkOpenDestinationAfterExtraction, &QCheckBox::clicked, this,
          &Extraction::checkOpenDestinationAfterExtraction);
  connect(ui.chkTrashAfterExtracting, &QCheckBox::clicked, this,
          &Extraction::checkTrashAfterExtracting);
  connect(ui.chkOverwriteExistingFiles, &QCheckBox::clicked, this,
          &Extraction::checkOverwriteOnExtraction);
  connect(ui.chkPlaySoundWhenDone, &QCheckBox::clicked, this, &Extraction::checkPlaySoundWhenDone);
}

// The panel opens where the archive lies: most extract beside it.
Dialogs::OpenPanel Extraction::destinationPanel(const QString& title) const {
  Dialogs::OpenPanel panel = Dialogs::OpenPanel::folder(title);
  panel.startFolder = PathText::deletingLastPathComponent(context_.opener.archive().filepath);
  return panel;
}

void Extraction::btnExtractAction() {
  if (!context_.opener.archive().isOpen())
    return;
  context_.ui.tabContainer->setCurrentIndex(0);
  const QStringList chosen = context_.dialogs.chooseToOpen(
      context_.ui.mainWindow,
      destinationPanel(QStringLiteral("Select destination for extraction")));
  openDialogForExtraction(chosen, chosen.isEmpty() ? 0 : kPanelOk);
}

void Extraction::openDialogForExtraction(const QStringList& sheet, int returnCode) {
  if (returnCode != kPanelOk || sheet.isEmpty())
    return;
  context_.ui.tabContainer->setCurrentIndex(0);
  const bool show = PreferencesStore::isYes(QStringLiteral("openDestinationAfterExtraction"));
  const bool overwrite = PreferencesStore::isYes(QStringLiteral("overwriteOnExtraction"));
  const bool sound = PreferencesStore::isYes(QStringLiteral("playSoundWhenDone"));
  file_ = sheet;
  QString destination = sheet.first();
  OpenedArchive& archive = context_.opener.archive();
  if (context_.ui.chkCreateSurroundingFolderBeforeExtracting->isChecked()) {
    destination += u'/' + ArchiveType::withoutTypeExtension(archive.filename, archive.archivetype);
    QDir().mkpath(destination);
  }
  choosenPath_ = destination;

  const QString password = context_.passwordFieldText();
  archive.archivePass =
      password.isEmpty() ? OpenedArchive::kNoPassword : QStringLiteral("-p") + password;
  const QString& type = archive.archivetype;
  const ArchiveCommands::Archive target{type, archive.filepath};
  ArchiveCommands::ExtractionSetting setting{destination, overwrite, archive.archivePass};
  setting.arjVolumes =
      type == ArchiveType::Arj && QFileInfo::exists(ArchiveCommands::firstArjVolume(target.path));
  ToolRun run = ArchiveCommands::extractAll(target, setting);
  if (context_.refusesName(ArchiveCommands::unsafeName(target, run.program, {})))
    return;
  const std::optional<bool> collides = guard(
      {target, destination, archive.archivePass, overwrite, archive.encrypted, QStringList()});
  if (!collides)
    return;
  if (*collides) {
    setting.collides = true;
    run = ArchiveCommands::extractAll(target, setting);
  }

  showDialog();
  run.acceptsUserInput = true;
  const QDateTime started = EscapingLinks::now(destination);
  context_.ui.operationStatus->clear();
  const bool succeeded = context_.runReported(run).succeeded();
  const bool reportsResult = type != ArchiveType::Arj && type != ArchiveType::Lha &&
                             type != ArchiveType::Tbz2 && type != ArchiveType::Bz2;
  if (reportsResult) {
    context_.ui.fileContentView->setPlainText(
        overwrite ? QStringLiteral("Extraction done.\n")
                  : QStringLiteral("Extraction done.\n NOTE: existing files and folders skipped "
                                   "and not overwritten.\n"));
  }
  if (type == ArchiveType::Lha || type == ArchiveType::Tbz2 || type == ArchiveType::Bz2 ||
      ArchiveType::isCompressedTar(type))
    removeEscapingLinks(destination, started);
  if (succeeded)
    reportExtracted(filesInArchive(), destination);
  // The archive's own folder is shown, not the destination.
  finish(PathText::deletingLastPathComponent(archive.filepath), show, sound);
}

void Extraction::btnExtractSelected() {
  const QModelIndexList selected = context_.selectedRows();
  if (selected.isEmpty())
    return;
  context_.ui.dropZone->hide();
  context_.ui.tabContainer->setCurrentIndex(0);
  const QString destination =
      context_.dialogs
          .chooseToOpen(context_.ui.mainWindow,
                        destinationPanel(QStringLiteral("Select directory to extract to")))
          .value(0);
  if (destination.isEmpty())
    return;

  const OpenedArchive& archive = context_.opener.archive();
  const QString& type = archive.archivetype;
  const QString password = context_.passwordFieldText();
  if (type == ArchiveType::Rar || type == ArchiveType::Arj || type == ArchiveType::Lha ||
      ArchiveType::isCompressedTar(type)) {
    context_.dialogs.alert(
        QStringLiteral("Archive not supported"),
        QStringLiteral("Extracting files from this type of archives is not supported."),
        QStringLiteral("OK"));
    return;
  }
  const bool extracts = type == ArchiveType::Zip || type == ArchiveType::SevenZip;
  const ArchiveEntries& entries = context_.ui.oppenedArchiveArrayController->entries();
  QStringList names;
  for (const QModelIndex& row : selected)
    names << entries[row.row()].name;
  const QString passwordSwitch = password.isEmpty() ? QString() : QStringLiteral("-p") + password;
  if (extracts && context_.refusesListedNames(archive.filepath, passwordSwitch, names))
    return;
  // Each run answers every question with yes, so existing files are replaced.
  if (extracts &&
      !guard(
          {{type, archive.filepath}, destination, passwordSwitch, true, archive.encrypted, names}))
    return;

  showDialog();
  QProgressBar* progress = dialog_->extractionAnimation();
  progress->setRange(0, static_cast<int>(selected.size()));
  progress->setValue(0);
  const bool show = PreferencesStore::isYes(QStringLiteral("openDestinationAfterExtraction"));
  const bool sound = PreferencesStore::isYes(QStringLiteral("playSoundWhenDone"));
  int done = 0;
  int extracted = 0;
  context_.ui.operationStatus->clear();
  for (const QString& name : names) {
    dialog_->extractionDlgFileNameTitle()->setText(name);
    progress->setValue(++done);
    if (!extracts)
      continue;
    ToolRun run =
        ArchiveCommands::extractEntry({type, archive.filepath}, name, destination, password);
    run.acceptsUserInput = true;
    if (!context_.runReported(run).succeeded())
      break;
    ++extracted;
  }
  if (extracts && extracted == names.size())
    reportExtracted(extracted, destination);
  progress->setRange(0, 0);
  finish(destination, show, sound);
}

void Extraction::btnOpenArchiveFolder() {
  const QString& path = context_.opener.archive().filepath;
  if (!path.isEmpty())
    context_.desktop.showFolder(PathText::deletingLastPathComponent(path));
}

void Extraction::checkOpenDestinationAfterExtraction() {
  storeOption(context_.ui.chkOpenDestinationAfterExtraction,
              QStringLiteral("openDestinationAfterExtraction"));
}

void Extraction::checkTrashAfterExtracting() {
  storeOption(context_.ui.chkTrashAfterExtracting, QStringLiteral("trashAfterExtracting"));
}

void Extraction::checkOverwriteOnExtraction() {
  storeOption(context_.ui.chkOverwriteExistingFiles, QStringLiteral("overwriteOnExtraction"));
}

void Extraction::checkPlaySoundWhenDone() {
  storeOption(context_.ui.chkPlaySoundWhenDone, QStringLiteral("playSoundWhenDone"));
}

void Extraction::showDialog() {
  const OpenedArchive& archive = context_.opener.archive();
  dialog_->extractionDlgFileNameTitle()->setText(archive.filepath);
  dialog_->extractionDlgFileSizeTitle()->setText(SizeText::archiveFile(archive.filepath));
  dialog_->extractionAnimation()->setRange(0, 0);
  if (!running_)
    running_.emplace(context_, dialog_);
}

int Extraction::filesInArchive() const {
  const EntriesModel* rows = context_.ui.oppenedArchiveArrayController;
  int files = 0;
  for (int row = 0; row < rows->rowCount(); ++row)
    files += rows->isFolder(row) ? 0 : 1;
  return files;
}

void Extraction::reportExtracted(int count, const QString& destination) {
  // A removed escaping link is the more important news.
  if (!context_.ui.mainWindow->statusBar()->currentMessage().isEmpty())
    return;
  context_.ui.operationStatus->showDone(
      tr("%1 extracted to %2")
          .arg(OperationStatus::counted(count, tr("file"), tr("files")),
               OperationStatus::placeText(destination)),
      destination);
}

void Extraction::finish(const QString& folderToShow, bool show, bool sound) {
  running_.reset();
  if (show)
    context_.desktop.showFolder(folderToShow);
  if (sound)
    context_.desktop.beep();
  dialog_->hide();
}

std::optional<bool> Extraction::guard(const ExtractionGuard::Request& request) {
  const ExtractionGuard verdict = ExtractionGuard::check(context_.runner, request);
  if (verdict.verdict == ExtractionGuard::Verdict::Go)
    return verdict.collides;
  context_.dialogs.alert(verdict.title(), verdict.message(), QStringLiteral("OK"));
  return std::nullopt;
}

void Extraction::removeEscapingLinks(const QString& destination, const QDateTime& since) {
  const QStringList removed = EscapingLinks::removeNewerThan(destination, since);
  if (removed.isEmpty())
    return;
  QStringList names;
  for (const QString& link : removed)
    names << QDir(destination).relativeFilePath(link);
  context_.ui.mainWindow->statusBar()->showMessage(
      tr("Removed %n link(s) that led outside the destination: %1", nullptr,
         static_cast<int>(removed.size()))
          .arg(names.join(QStringLiteral(", "))));
}
