#include "engine/ArchiveEditing.h"

#include "engine/AddingWindows.h"
#include "engine/ArchiveCommands.h"
#include "engine/ArchiveOpener.h"
#include "engine/ArchiveType.h"
#include "engine/EntriesModel.h"
#include "engine/EntriesProxy.h"
#include "engine/MainWindowUi.h"
#include "engine/OperationStatus.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/ToolLeftovers.h"
#include "platform/Dialogs.h"

#include <QAction>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMainWindow>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QTableView>

namespace {

constexpr int kPanelOk = 1;

}  // namespace

ArchiveEditing::ArchiveEditing(const EngineContext& context, AddingWindows& windows,
                               QObject* parent)
    : QObject(parent), context_(context), windows_(windows) {
  connect(context.ui.btnDeleteSelectedFilesFromArchive, &QAction::triggered, this,
          &ArchiveEditing::btnDeleteSelectedFilesFromArchive);
}

void ArchiveEditing::alertNotUpdatable(Dialogs& dialogs) {
  dialogs.alert(QStringLiteral("Archive not supported."),
                QStringLiteral("This archive type is not supported for updating."), QString());
}

void ArchiveEditing::btnDeleteSelectedFilesFromArchive() {
  QTableView* table = context_.ui.openedArchiveTableView;
  const QModelIndexList selected = context_.selectedRows();
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
  if (ArchiveType::isCompressedTar(context_.opener.archive().archivetype)) {
    alertNotUpdatable(context_.dialogs);
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
  context_.ui.operationStatus->clear();
  QString report = QStringLiteral("Items deleted:\n");
  int next =
      selected.isEmpty() ? 0 : context_.ui.entriesProxy->mapFromSource(selected.first()).row();
  for (const QString& name : names) {
    context_.opener.deleteFileFromArchiveWithName(name);
    context_.opener.fillListBoxWithArchiveContent();
    table->selectRow(std::min(++next, context_.ui.entriesProxy->rowCount() - 1));
    report += name + u'\n';
    refreshSize();
  }
  report += QStringLiteral("\n -- Deletion completed, archive updated. --");
  context_.ui.fileContentView->setPlainText(report);
  if (!context_.ui.operationStatus->failed())
    context_.ui.operationStatus->showDone(
        tr("%1 deleted from %2")
            .arg(OperationStatus::counted(names.size(), tr("entry"), tr("entries")),
                 archive.filename));
  context_.ui.loadingArchiveListingLoader->hide();
}

void ArchiveEditing::addFilesToArchive() {
  if (!context_.opener.archive().isOpen()) {
    context_.dialogs.alert(QStringLiteral("Attention."),
                           QStringLiteral("Please open archive first!"), QString());
    return;
  }
  const auto panel = Dialogs::OpenPanel::filesAndFolders(QStringLiteral("Select files to add"));
  const QStringList chosen = context_.dialogs.chooseToOpen(context_.ui.mainWindow, panel);
  updateArchive(chosen, chosen.isEmpty() ? 0 : kPanelOk);
}

void ArchiveEditing::updateArchive(const QStringList& sheet, int returnCode) {
  if (returnCode != kPanelOk || sheet.isEmpty())
    return;
  windows_.leaveCreation();
  const OpenedArchive& archive = context_.opener.archive();
  const QString name = PathText::lastPathComponent(archive.filepath);
  const QString& type = archive.archivetype;
  if (type == ArchiveType::Bzip2 || type == u"gzip" || ArchiveType::isCompressedTar(type)) {
    alertNotUpdatable(context_.dialogs);
    return;
  }
  const ArchiveCommands::Archive target{type, archive.filepath};
  if (context_.refusesName(ArchiveCommands::unsafeName(
          target, ArchiveCommands::add(target, QString()).program, sheet)))
    return;
  context_.ui.loadingArchiveListingLoader->show();
  windows_.showAdding(name, static_cast<int>(sheet.size()));
  if (type == ArchiveType::Rar)
    context_.ui.fileContentView->setPlainText(
        QStringLiteral("Compressing to rar... Please wait...\n\n"));
  int done = 0;
  int added = 0;
  context_.ui.operationStatus->clear();
  for (const QString& item : sheet) {
    const ToolLeftovers leftovers(archive.filepath);
    if (context_.runReported(ArchiveCommands::add(target, item)).succeeded())
      ++added;
    else
      leftovers.removeNew();
    windows_.setAdded(++done);
  }
  if (added == sheet.size())
    context_.ui.operationStatus->showDone(
        tr("%1 added to %2")
            .arg(OperationStatus::counted(added, tr("item"), tr("items")), archive.filename));
  refreshSize();
  windows_.hideAdding();
  context_.opener.fillListBoxWithArchiveContent();
  context_.ui.loadingArchiveListingLoader->hide();
}

void ArchiveEditing::refreshSize() {
  context_.ui.filesize->setText(SizeText::archiveFile(context_.opener.archive().filepath));
}
