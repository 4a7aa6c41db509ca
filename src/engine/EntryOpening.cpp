#include "engine/EntryOpening.h"

#include "engine/ArchiveCommands.h"
#include "engine/ArchiveOpener.h"
#include "engine/ArchiveType.h"
#include "engine/EntriesModel.h"
#include "engine/EntriesProxy.h"
#include "engine/LongRun.h"
#include "engine/MainWindowUi.h"
#include "engine/OperationStatus.h"
#include "engine/OwnTemporaryFolder.h"
#include "platform/Desktop.h"
#include "platform/ResourceIcons.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QMainWindow>
#include <QMenu>
#include <QTableView>

EntryOpening::EntryOpening(const EngineContext& context, QObject* parent)
    : QObject(parent), context_(context), contextMenu_(new QMenu(context.ui.mainWindow)) {
  QTableView* table = context.ui.openedArchiveTableView;
  openEntryAction_ = new QAction(
      ResourceIcons::themed(QStringLiteral("document-open"), QStringLiteral("action-open")),
      tr("&Open"), table);
  openEntryAction_->setObjectName(QStringLiteral("btnOpenEntry"));
  connect(openEntryAction_, &QAction::triggered, this, &EntryOpening::openCurrent);
  // Double-click or Enter, or a single click where the desktop wants that.
  connect(table, &QAbstractItemView::activated, this, [this](const QModelIndex& index) {
    openEntry(context_.ui.entriesProxy->mapToSource(index).row());
  });

  contextMenu_->setObjectName(QStringLiteral("entriesContextMenu"));
  contextMenu_->addAction(openEntryAction_);
  contextMenu_->addAction(context.ui.btnExtractSelected);
  contextMenu_->addSeparator();
  contextMenu_->addAction(context.ui.btnDeleteSelectedFilesFromArchive);
  contextMenu_->addSeparator();
  contextMenu_->addAction(context.ui.btnTestAction);
  table->setContextMenuPolicy(Qt::CustomContextMenu);
  // Rows dragged to a file manager arrive there as files.
  context.ui.oppenedArchiveArrayController->setDragFiles(
      [this](const QList<int>& rows) { return extractToTemporary(rows); });
  table->setDragEnabled(true);
  table->setDragDropMode(QAbstractItemView::DragOnly);
  connect(table, &QWidget::customContextMenuRequested, this, &EntryOpening::showContextMenu);
}

void EntryOpening::openCurrent() {
  const QModelIndex current = context_.ui.openedArchiveTableView->currentIndex();
  if (current.isValid())
    openEntry(context_.ui.entriesProxy->mapToSource(current).row());
}

void EntryOpening::showContextMenu(const QPoint& position) {
  QTableView* table = context_.ui.openedArchiveTableView;
  const QModelIndex clicked = table->indexAt(position);
  if (!clicked.isValid())
    return;
  // The menu acts on the row under the pointer, as file managers do.
  if (!table->selectionModel()->isRowSelected(clicked.row(), QModelIndex()))
    table->selectRow(clicked.row());
  table->setCurrentIndex(clicked);
  openEntryAction_->setEnabled(!context_.ui.oppenedArchiveArrayController->isFolder(
      context_.ui.entriesProxy->mapToSource(clicked).row()));
  contextMenu_->popup(table->viewport()->mapToGlobal(position));
}

void EntryOpening::openEntry(int row) {
  const EntriesModel* rows = context_.ui.oppenedArchiveArrayController;
  if (row < 0 || row >= rows->rowCount() || rows->isFolder(row))
    return;
  const QStringList paths = extractToTemporary({row});
  if (paths.isEmpty())
    return;
  context_.desktop.openFile(paths.first());
  // The keys work on the table again once the tool is done.
  context_.ui.mainWindow->activateWindow();
  context_.ui.openedArchiveTableView->setFocus();
}

QStringList EntryOpening::extractToTemporary(const QList<int>& rows) {
  const OpenedArchive& archive = context_.opener.archive();
  const ArchiveEntries& entries = context_.ui.oppenedArchiveArrayController->entries();
  QStringList names;
  for (int row : rows)
    names << entries[row].name;
  if (ArchiveType::isCompressedTar(archive.archivetype)) {
    context_.ui.operationStatus->showFailure(
        tr("Single entries of .%1 archives cannot be taken out; extract the whole archive")
            .arg(archive.archivetype),
        QString());
    return {};
  }
  const ArchiveCommands::Archive target{archive.archivetype, archive.filepath};
  const QString password = context_.passwordFieldText();
  if (context_.refusesName(ArchiveCommands::unsafeName(
          target, ArchiveCommands::extractEntry(target, QString(), QString(), password).program,
          names)))
    return {};
  if (!OwnTemporaryFolder::ensure()) {
    context_.ui.operationStatus->showFailure(OwnTemporaryFolder::unusableMessage(), QString());
    return {};
  }
  if (!folder_)
    folder_ =
        std::make_unique<QTemporaryDir>(OwnTemporaryFolder::path() + QStringLiteral("open-XXXXXX"));
  // Each extraction gets its own folder, so equal names never meet.
  QTemporaryDir destination(folder_->path() + QStringLiteral("/XXXXXX"));
  destination.setAutoRemove(false);
  if (!destination.isValid()) {
    context_.ui.operationStatus->showFailure(
        tr("No temporary folder in %1: %2")
            .arg(OwnTemporaryFolder::path(), destination.errorString()),
        QString());
    return {};
  }
  context_.ui.operationStatus->clear();
  const LongRun running(context_);
  QStringList paths;
  for (const QString& name : names) {
    if (!context_
             .runReported(ArchiveCommands::extractEntry(target, name, destination.path(), password))
             .succeeded())
      return {};
    const QString path = destination.path() + u'/' + name;
    if (!QFileInfo::exists(path)) {
      context_.ui.operationStatus->showFailure(tr("%1 could not be extracted").arg(name),
                                               QString());
      return {};
    }
    paths << path;
  }
  return paths;
}
