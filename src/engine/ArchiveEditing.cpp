#include "engine/ArchiveEditing.h"

#include "app/Dialogs.h"
#include "app/WindowPlacement.h"
#include "create/ArchiveCreation.h"
#include "create/CompressingWindow.h"
#include "create/CreateArchiveWindow.h"
#include "create/JobSettings.h"
#include "engine/ArchiveCommands.h"
#include "engine/ArchiveOpener.h"
#include "engine/ArchiveType.h"
#include "engine/EntriesModel.h"
#include "engine/MainWindowUi.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/ToolLeftovers.h"

#include <QAction>
#include <QItemSelectionModel>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTableView>

namespace {

constexpr int kPanelOk = 1;

}  // namespace

ArchiveEditing::ArchiveEditing(const EngineContext& context, ArchiveCreation& creation,
                               QObject* parent)
    : QObject(parent), context_(context), creation_(creation) {
  connect(context.ui.btnDeleteSelectedFilesFromArchive, &QAction::triggered, this,
          &ArchiveEditing::btnDeleteSelectedFilesFromArchive);
  connect(context.ui.addFilesToArchive, &QAction::triggered, this,
          &ArchiveEditing::addFilesToArchive);
}

void ArchiveEditing::btnDeleteSelectedFilesFromArchive() {
  QTableView* table = context_.ui.openedArchiveTableView;
  const QModelIndexList selected = table->selectionModel()->selectedRows();
  EntriesModel* rows = context_.ui.oppenedArchiveArrayController;
  if (rows->rowCount() == selected.size()) {
    context_.dialogs.alert(
        QStringLiteral("Attention"),
        QStringLiteral("You have to leave at least one file or directory in the archive."),
        QStringLiteral("OK"));
    return;
  }
  if (context_.opener.archive().archivetype == ArchiveType::Arj) {
    context_.dialogs.alert(
        QStringLiteral("ARJ Archive"),
        QStringLiteral("Deleting files from ARJ archives is still not available"),
        QStringLiteral("OK"));
    return;
  }
  QStringList names;
  for (const QModelIndex& row : selected)
    names << rows->entries()[row.row()].name;
  const OpenedArchive& archive = context_.opener.archive();
  const ArchiveCommands::Archive target{archive.archivetype, archive.filepath};
  if (context_.refusesName(ArchiveCommands::unsafeName(
          target, ArchiveCommands::deleteEntry(target, QString(), archive.archivePass).program,
          names)) ||
      (archive.archivetype != ArchiveType::Lha &&
       context_.refusesListedNames(archive.filepath, archive.archivePass, names)))
    return;
  context_.ui.loadingArchiveListingLoader->show();
  QString report = QStringLiteral("Items deleted:\n");
  int next = selected.isEmpty() ? 0 : selected.first().row();
  for (const QString& name : names) {
    context_.opener.deleteFileFromArchiveWithName(name);
    context_.opener.fillListBoxWithArchiveContent();
    table->selectRow(std::min(++next, rows->rowCount() - 1));
    report += name + u'\n';
    refreshSize();
  }
  report += QStringLiteral("\n -- Deletion completed, archive updated. --");
  context_.ui.fileContentView->setPlainText(report);
  context_.ui.loadingArchiveListingLoader->hide();
}

void ArchiveEditing::addFilesToArchive() {
  if (!context_.opener.archive().isOpen()) {
    context_.dialogs.alert(QStringLiteral("Attention."),
                           QStringLiteral("Please open archive first!"), QString());
    return;
  }
  Dialogs::OpenPanel panel;
  panel.title = QStringLiteral("Select files to add");
  panel.chooseFiles = true;
  panel.chooseFolders = true;
  panel.multipleSelection = true;
  const QStringList chosen = context_.dialogs.chooseToOpen(context_.ui.mainWindow, panel);
  updateArchive(chosen, chosen.isEmpty() ? 0 : kPanelOk);
}

void ArchiveEditing::updateArchive(const QStringList& sheet, int returnCode) {
  if (returnCode != kPanelOk || sheet.isEmpty())
    return;
  creation_.createArchiveWindow()->hide();
  const OpenedArchive& archive = context_.opener.archive();
  const QString name = PathText::lastPathComponent(archive.filepath);
  // The volume size chosen for a new archive does not carry over.
  JobSettings::shared().splitVolumesSize = QStringLiteral("-v");
  const QString& type = archive.archivetype;
  if (type == ArchiveType::Bzip2 || type == u"gzip") {
    context_.dialogs.alert(QStringLiteral("Archive not supported."),
                           QStringLiteral("This archive type is not supported for updating."),
                           QString());
    return;
  }
  const ArchiveCommands::Archive target{type, archive.filepath};
  if (context_.refusesName(ArchiveCommands::unsafeName(
          target, ArchiveCommands::add(target, QString()).program, sheet)))
    return;
  CompressingWindow* window = creation_.compressingWindow();
  window->compressingArchiveName()->setText(name);
  context_.ui.loadingArchiveListingLoader->show();
  if (!window->isVisible())
    WindowPlacement::centreAndShow(window);
  if (type == ArchiveType::Rar)
    context_.ui.fileContentView->setPlainText(
        QStringLiteral("Compressing to rar... Please wait...\n\n"));
  QProgressBar* progress = window->compressingLoader();
  progress->setRange(0, static_cast<int>(sheet.size()));
  progress->setValue(0);
  int done = 0;
  for (const QString& item : sheet) {
    const ToolLeftovers leftovers(archive.filepath);
    if (!context_.runReported(ArchiveCommands::add(target, item)).succeeded())
      leftovers.removeNew();
    progress->setValue(++done);
  }
  refreshSize();
  window->hide();
  progress->setRange(0, 1);
  progress->setValue(0);
  window->compressingWindowStatus()->setText(QStringLiteral("Compressing..."));
  context_.opener.fillListBoxWithArchiveContent();
  context_.ui.loadingArchiveListingLoader->hide();
}

void ArchiveEditing::refreshSize() {
  context_.ui.filesize->setText(SizeText::archiveFile(context_.opener.archive().filepath));
}
