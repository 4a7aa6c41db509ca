#include "create/CreateArchiveListView.h"

#include "create/FolderSize.h"
#include "create/SelectionListModel.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/ObjectNames.h"
#include "platform/PreferencesStore.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int kDropPollMs = 50;
constexpr int kRowHeight = 24;
constexpr int kSizeColumnWidth = 100;

const QString kDroppedFiles = QStringLiteral("droppedFiles");

// A trailing slash would leave QFileInfo with an empty file name.
QString lastPathComponent(const QString& cleanPath) {
  const QString name = QFileInfo(cleanPath).fileName();
  return name.isEmpty() ? cleanPath : name;
}

}  // namespace

CreateArchiveListView::CreateArchiveListView(ToolRunner& runner, Dialogs& dialogs, Desktop& desktop,
                                             QWidget* parent)
    : QWidget(parent), runner_(runner), dialogs_(dialogs), desktop_(desktop) {
  setObjectName(QStringLiteral("CreateArchiveListView"));
  model_ = new SelectionListModel(this);
  buildTable();
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(table_, 1);
  layout->addLayout(buildButtonBar());
  updateRemoveButton();

  auto* dropPoll = new QTimer(this);
  connect(dropPoll, &QTimer::timeout, this, &CreateArchiveListView::timerUpdateFileList);
  dropPoll->start(kDropPollMs);
}

void CreateArchiveListView::buildTable() {
  table_ = named(new QTableView, "createArchiveTableView");
  table_->setModel(model_);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setAlternatingRowColors(true);
  table_->setShowGrid(false);
  table_->setWordWrap(false);
  table_->setIconSize(QSize(18, 18));
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table_->verticalHeader()->setDefaultSectionSize(kRowHeight);
  QHeaderView* columns = table_->horizontalHeader();
  columns->setHighlightSections(false);
  columns->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  columns->setSectionResizeMode(SelectionListModel::Name, QHeaderView::Stretch);
  columns->setSectionResizeMode(SelectionListModel::Size, QHeaderView::Fixed);
  columns->resizeSection(SelectionListModel::Size, kSizeColumnWidth);

  auto* removeAction = new QAction(tr("Remove"), table_);
  removeAction->setShortcut(QKeySequence::Delete);
  removeAction->setShortcutContext(Qt::WidgetShortcut);
  connect(removeAction, &QAction::triggered, this, &CreateArchiveListView::removeSelectedRows);
  table_->addAction(removeAction);

  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &CreateArchiveListView::updateRemoveButton);
  connect(model_, &QAbstractItemModel::rowsRemoved, this,
          &CreateArchiveListView::updateRemoveButton);
}

QLayout* CreateArchiveListView::buildButtonBar() {
  calculatingSizesSpin_ = named(new QProgressBar, "calculatingSizesSpin");
  calculatingSizesSpin_->setRange(0, 0);
  calculatingSizesSpin_->setMaximumWidth(80);
  calculatingSizesSpin_->setTextVisible(false);
  calculatingSizesSpin_->hide();
  calculatingSizesLabel_ = named(new QLabel(tr("Calculating sizes…")), "calculatingSizesLabel");
  calculatingSizesLabel_->hide();

  addButton_ = named(new QPushButton(tr("Add…")), "btnAddContent");
  connect(addButton_, &QPushButton::clicked, this, &CreateArchiveListView::btnAddContent);
  removeButton_ = named(new QPushButton(tr("Remove")), "btnRemoveSelectedItems");
  connect(removeButton_, &QPushButton::clicked, this, &CreateArchiveListView::removeSelectedRows);

  auto* bar = new QHBoxLayout;
  bar->addWidget(calculatingSizesSpin_);
  bar->addWidget(calculatingSizesLabel_);
  bar->addStretch(1);
  bar->addWidget(addButton_);
  bar->addWidget(removeButton_);
  return bar;
}

void CreateArchiveListView::btnAddContent() {
  const QStringList paths =
      dialogs_.chooseToOpen(window(), Dialogs::OpenPanel::filesAndFolders(tr("Select items")));
  openDialogForSelection(paths, paths.isEmpty() ? 0 : 1);
}

void CreateArchiveListView::openDialogForSelection(const QStringList& sheet, int returnCode) {
  if (returnCode != 1)
    return;
  addPathsShowingProgress(sheet, SelectionEntry::OpenPanel);
}

void CreateArchiveListView::timerUpdateFileList() {
  if (addingRows_)
    return;
  const QStringList dropped = PreferencesStore::list(kDroppedFiles);
  if (dropped.isEmpty())
    return;
  // Taken before sizing, which keeps the event loop turning: a drop landing
  // meanwhile leaves a new list for the next round.
  PreferencesStore::remove(kDroppedFiles);
  addPaths(dropped, SelectionEntry::Dropped);
}

void CreateArchiveListView::addFiles(const QStringList& paths) {
  addPathsShowingProgress(paths, SelectionEntry::AddFiles);
}

void CreateArchiveListView::addPathsShowingProgress(const QStringList& paths,
                                                    SelectionEntry entry) {
  calculatingSizesLabel_->show();
  calculatingSizesSpin_->show();
  addPaths(paths, entry);
  calculatingSizesLabel_->hide();
  calculatingSizesSpin_->hide();
}

void CreateArchiveListView::addPaths(const QStringList& paths, SelectionEntry entry) {
  const QScopedValueRollback adding(addingRows_, true);
  for (const QString& path : paths)
    model_->append(rowFor(path, entry));
}

SelectionRow CreateArchiveListView::rowFor(const QString& path, SelectionEntry entry) {
  const QFileInfo info(path);
  SelectionRow row;
  row.fullPath = QDir::cleanPath(info.absoluteFilePath());
  row.name = lastPathComponent(row.fullPath);
  row.fileIcon = desktop_.iconForFile(row.fullPath);
  // Unreadable paths are neither folders nor sized, so they count as
  // empty files.
  row.fileSize = info.isDir()
                     ? SelectionSizeText::folder(FolderSize::bytes(runner_, row.fullPath), entry)
                     : SelectionSizeText::file(static_cast<float>(info.size()));
  return row;
}

void CreateArchiveListView::removeSelectedRows() {
  QList<int> rows;
  for (const QModelIndex& index : table_->selectionModel()->selectedRows())
    rows << index.row();
  model_->removeRows(rows);
}

void CreateArchiveListView::updateRemoveButton() {
  removeButton_->setEnabled(table_->selectionModel()->hasSelection());
}
