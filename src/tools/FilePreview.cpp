#include "tools/FilePreview.h"

#include "engine/ArchiveContents.h"
#include "engine/EntriesModel.h"
#include "engine/EntriesProxy.h"
#include "engine/ExtractionGuard.h"
#include "engine/MainWindowUi.h"
#include "engine/OwnTemporaryFolder.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "engine/TestReport.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "tools/FilePreviewPanel.h"
#include "tools/PreviewRules.h"

#include <QDir>
#include <QDockWidget>
#include <QFileInfo>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>
#include <QStandardPaths>
#include <QTableView>

FilePreview::FilePreview(const EngineContext& context, QObject* parent)
    : QObject(parent), context_(context), panel_(new FilePreviewPanel) {
  const MainWindowUi& ui = context.ui;
  ui.drawerObject->setWidget(panel_);
  connect(panel_->generatePreviewButton(), &QPushButton::clicked, this,
          &FilePreview::btnGeneratePreview);
  connect(panel_->nextButton(), &QPushButton::clicked, this, &FilePreview::btnNext);
  connect(panel_->previousButton(), &QPushButton::clicked, this, &FilePreview::btnPrevious);
  connect(panel_->extractFileButton(), &QPushButton::clicked, this, &FilePreview::btnExtractFile);
  connect(panel_->openWithButton(), &QPushButton::clicked, this, &FilePreview::btnOpenWithFinder);
  connect(ui.openedArchiveTableView->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &FilePreview::updateButtons);
  connect(ui.entriesProxy, &QAbstractItemModel::layoutChanged, this, &FilePreview::updateButtons);
  connect(ui.entriesProxy, &QAbstractItemModel::modelReset, this, &FilePreview::updateButtons);
  connect(ui.entriesProxy, &QAbstractItemModel::rowsRemoved, this, &FilePreview::updateButtons);
  connect(ui.entriesProxy, &QAbstractItemModel::rowsInserted, this, &FilePreview::updateButtons);
  updateButtons();
}

void FilePreview::btnGeneratePreview() {
  if (refused())
    return;
  const QString name = firstSelectedName();
  if (!name.isNull())
    preview(name);
}

void FilePreview::btnNext() {
  walk(+1);
}

void FilePreview::btnPrevious() {
  walk(-1);
}

void FilePreview::btnExtractFile() {
  if (refused())
    return;
  const QString name = firstSelectedName();
  if (name.isNull())
    return;
  Dialogs::SavePanel panel;
  panel.title = tr("Save Entry");
  panel.startFolder = QStandardPaths::writableLocation(QStandardPaths::DesktopLocation);
  panel.fileName = PathText::lastPathComponent(name);
  const QString chosen = context_.dialogs.chooseToSave(context_.ui.mainWindow, panel);
  if (chosen.isEmpty())
    return;
  // The entry keeps its own name; the panel only chooses the folder.
  const QString folder = PathText::deletingLastPathComponent(chosen);
  if (PreviewRules::extracts(context_.ui.archivetype->text()) && !mayReplace(name, chosen, folder))
    return;
  startSpinner();
  extractEntry(name, folder);
  stopSpinner();
}

void FilePreview::btnOpenWithFinder() {
  if (refused())
    return;
  const QString name = firstSelectedName();
  if (name.isNull() || !ensureTemporaryFolder())
    return;
  startSpinner();
  const QString folder = OwnTemporaryFolder::path();
  extractEntry(name, folder);
  context_.desktop.openFile(folder + PathText::lastPathComponent(name));
  stopSpinner();
}

bool FilePreview::refused() {
  if (!PreviewRules::refuses(context_.ui.archivetype->text()))
    return false;
  stopSpinner();
  context_.dialogs.alert(
      QStringLiteral("Archive not supported"),
      QStringLiteral("Previewing files from this type of archives is not supported."),
      QStringLiteral("OK"));
  return true;
}

QString FilePreview::firstSelectedName() const {
  const QModelIndexList rows = context_.selectedRows();
  if (rows.isEmpty())
    return {};
  return context_.ui.oppenedArchiveArrayController->entries().at(rows.first().row()).name;
}

void FilePreview::walk(int step) {
  if (refused())
    return;
  const std::optional<int> row =
      PreviewRules::walk(currentTableRow(), context_.ui.entriesProxy->rowCount(), step,
                         [this](int at) { return nameAtTableRow(at); });
  if (!row)
    return;
  selectTableRow(*row);
  preview(nameAtTableRow(*row));
}

void FilePreview::preview(const QString& name) {
  if (!ensureTemporaryFolder())
    return;
  const QString folder = OwnTemporaryFolder::path();
  startSpinner();
  if (extractEntry(name, folder) && PreviewRules::isImage(name)) {
    const QString file = folder + PathText::lastPathComponent(name);
    panel_->imagePreviewField()->setImage(QPixmap(file));
    panel_->previewedName()->setText(PathText::lastPathComponent(name));
    panel_->previewedName()->setToolTip(name);
    panel_->fileSizeField()->setText(SizeText::archiveFile(file));
  }
  // The whole folder goes, with whatever the entry brought along.
  QDir(folder).removeRecursively();
  stopSpinner();
}

bool FilePreview::extractEntry(const QString& name, const QString& folder) {
  const QString path = context_.ui.filepath->text();
  const QString password = context_.passwordFieldText();
  const std::optional<ToolRun> run =
      PreviewRules::extraction(context_.ui.archivetype->text(), path, name, password, folder);
  if (!run)
    return true;
  const QString passwordSwitch = password.isEmpty() ? QString() : QStringLiteral("-p") + password;
  if (context_.refusesListedNames(path, passwordSwitch, {name}))
    return false;
  context_.runReported(*run);
  return true;
}

bool FilePreview::mayReplace(const QString& name, const QString& chosen, const QString& folder) {
  const QString path = context_.ui.filepath->text();
  const QString password = context_.passwordFieldText();
  const QString passwordSwitch = password.isEmpty() ? QString() : QStringLiteral("-p") + password;
  // "e" writes a folder entry's files flat into the folder, each under its
  // own last name.
  const ArchiveContents contents =
      ArchiveContents::read(context_.runner, context_.ui.archivetype->text(), path, passwordSwitch);
  QStringList existing;
  for (const ContentEntry& entry : contents.under({name})) {
    const QFileInfo target(folder + u'/' + PathText::lastPathComponent(entry.path));
    if (!entry.folder && (target.exists() || target.isSymLink()))
      existing << target.fileName();
  }
  if (existing.isEmpty())
    return true;
  if (existing != QStringList{PathText::lastPathComponent(chosen)}) {
    context_.dialogs.alert(tr("File exists"),
                           tr("The folder already holds a file named \"%1\", which saving the "
                              "entry would replace. Choose that name to replace the file, or "
                              "another folder. Nothing was saved.")
                               .arg(existing.first()),
                           QStringLiteral("OK"));
    return false;
  }
  // A password that does not open the entry would leave the replaced file
  // empty.
  const ToolResult result = context_.runner.run(PreviewRules::entryTest(path, name, password));
  if (TestReport::passed(QString::fromUtf8(result.output + result.errors), false))
    return true;
  ExtractionGuard refusal;
  refusal.verdict = ExtractionGuard::Verdict::WrongPassword;
  context_.dialogs.alert(refusal.title(), refusal.message(), QStringLiteral("OK"));
  return false;
}

bool FilePreview::ensureTemporaryFolder() {
  if (OwnTemporaryFolder::ensure())
    return true;
  context_.dialogs.alert(OwnTemporaryFolder::unusableTitle(), OwnTemporaryFolder::unusableMessage(),
                         QStringLiteral("OK"));
  return false;
}

int FilePreview::currentTableRow() const {
  const QModelIndexList rows = context_.ui.openedArchiveTableView->selectionModel()->selectedRows();
  int first = -1;
  for (const QModelIndex& row : rows) {
    if (first < 0 || row.row() < first)
      first = row.row();
  }
  return first;
}

QString FilePreview::nameAtTableRow(int row) const {
  const EntriesProxy* rows = context_.ui.entriesProxy;
  const QModelIndex entry = rows->mapToSource(rows->index(row, 0));
  return context_.ui.oppenedArchiveArrayController->entries().at(entry.row()).name;
}

void FilePreview::selectTableRow(int row) {
  QTableView* table = context_.ui.openedArchiveTableView;
  const QModelIndex index = table->model()->index(row, 0);
  table->selectionModel()->setCurrentIndex(
      index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
  table->scrollTo(index);
}

void FilePreview::updateButtons() {
  const int current = currentTableRow();
  const bool selected = current >= 0;
  panel_->generatePreviewButton()->setEnabled(selected);
  panel_->extractFileButton()->setEnabled(selected);
  panel_->openWithButton()->setEnabled(selected);
  panel_->previousButton()->setEnabled(current > 0);
  panel_->nextButton()->setEnabled(selected && current + 1 < context_.ui.entriesProxy->rowCount());
}

void FilePreview::startSpinner() {
  panel_->previewLoadingIndicator()->show();
}

void FilePreview::stopSpinner() {
  panel_->previewLoadingIndicator()->hide();
}
