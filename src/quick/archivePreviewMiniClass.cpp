#include "quick/archivePreviewMiniClass.h"

#include "engine/ArchiveCommands.h"
#include "engine/ArchiveEditing.h"
#include "engine/ArchiveType.h"
#include "engine/ExtractionGuard.h"
#include "engine/ListedNames.h"
#include "engine/LiteralNames.h"
#include "engine/PathText.h"
#include "engine/ToolLeftovers.h"
#include "engine/ToolLocations.h"
#include "engine/ToolProblem.h"
#include "engine/listing/OutputLines.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/PreferenceKeys.h"
#include "platform/ToolRunner.h"
#include "quick/FloatingWindow.h"
#include "quick/MiniArchiveCommands.h"
#include "quick/MiniListing.h"
#include "quick/PanelGeometry.h"
#include "quick/archivePreviewWindowClass.h"
#include "quick/contextMenuWindowClass.h"

#include <QAbstractAnimation>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>

namespace {

constexpr int kPanelOk = 1;
constexpr double kDimmedPanel = 0.5;

}  // namespace

archivePreviewMiniClass::archivePreviewMiniClass(Services services,
                                                 contextMenuWindowClass& contextWindow,
                                                 const QString& filepath, QObject* parent)
    : QObject(parent),
      services_(std::move(services)),
      contextWindow_(contextWindow),
      filepath_(filepath),
      miniArchiveWindow_(std::make_unique<archivePreviewWindowClass>()) {
  archivePreviewWindowClass* window = miniArchiveWindow_.get();
  connect(contextWindow_.browseButton(), &QPushButton::clicked, this,
          &archivePreviewMiniClass::btnContextMenuOpenMiniArchiveList);
  connect(window->addButton(), &QPushButton::clicked, this, &archivePreviewMiniClass::btnAdd);
  connect(window->removeButton(), &QPushButton::clicked, this, &archivePreviewMiniClass::btnRemove);
  connect(window->extractButton(), &QPushButton::clicked, this,
          &archivePreviewMiniClass::btnExtract);
  connect(window->quitButton(), &QPushButton::clicked, this, &archivePreviewMiniClass::btnQuit);
}

archivePreviewMiniClass::~archivePreviewMiniClass() = default;

void archivePreviewMiniClass::btnContextMenuOpenMiniArchiveList() {
  archivePreviewWindowClass* window = miniArchiveWindow_.get();
  FloatingWindow::fadeTo(&contextWindow_, kDimmedPanel);
  window->setWindowOpacity(0.0);
  window->move(PanelGeometry::besidePanel(contextWindow_.frameGeometry(), window->size()));
  window->showArchiveName(PathText::lastPathComponent(filepath_));
  window->showProblem({});
  window->show();
  window->raise();
  window->activateWindow();
  FloatingWindow::fadeTo(window, 1.0);
  fillListBoxWithArchiveContent();
}

void archivePreviewMiniClass::fillListBoxWithArchiveContent() {
  const QString& path = filepath_;
  const std::optional<ToolRun> run = MiniArchiveCommands::listing(path);
  // Other types leave the list and its count as they are.
  if (!run)
    return;
  if (refuses(LiteralNames::firstUnsafe(run->program, {PathText::lastPathComponent(path)})))
    return;
  archivePreviewWindowClass* window = miniArchiveWindow_.get();
  const QString type = ArchiveType::ofPath(path);
  if (type == ArchiveType::Arj)
    window->startLoader();
  const LhaVersion version = type == ArchiveType::Lha ? lhaVersion() : LhaVersion::Lhasa;
  const ToolResult result = runReported(*run);
  const OutputLines lines(result.output);

  QStandardItemModel* rows = window->theArrayController();
  rows->clear();
  if (!lines.isUtf8()) {
    window->showProblem(ToolProblem::namesNotUtf8(*run).message);
  } else {
    encrypted_ = containsNoCase(result.output, "Encrypted = +");
    for (const MiniListing::Row& row : MiniListing::rows(type, lines, version, icons_)) {
      auto* item = new QStandardItem(row.fileIcon, row.fileName);
      item->setData(row.fileName, archivePreviewWindowClass::kFileNameRole);
      item->setToolTip(row.fileName);
      rows->appendRow(item);
    }
  }
  window->fieldOpenedArchiveNumberOfFiles()->setText(QString::asprintf("%i", rows->rowCount()));
}

void archivePreviewMiniClass::btnAdd() {
  miniArchiveWindow_->showProblem({});
  if (filepath_.isEmpty()) {
    services_.dialogs.alert(QStringLiteral("Attention."),
                            QStringLiteral("Please open archive first!"), QString());
    return;
  }
  const auto panel = Dialogs::OpenPanel::filesAndFolders(QStringLiteral("Select files to add"));
  const QStringList chosen = services_.dialogs.chooseToOpen(miniArchiveWindow_.get(), panel);
  updateArchive(chosen, chosen.isEmpty() ? 0 : kPanelOk);
}

// Every chosen path is added by a run of its own in the archive's folder.
void archivePreviewMiniClass::updateArchive(const QStringList& sheet, int returnCode) {
  if (returnCode != kPanelOk)
    return;
  const QString type = ArchiveType::ofPath(filepath_);
  // "gzip" and "bzip2" only: a gz or bz2 archive goes on to 7-Zip.
  if (type == u"gzip" || type == ArchiveType::Bzip2) {
    ArchiveEditing::alertNotUpdatable(services_.dialogs);
    return;
  }
  const ArchiveCommands::Archive target{type, filepath_};
  if (refuses(ArchiveCommands::unsafeName(target, ArchiveCommands::add(target, QString()).program,
                                          sheet)))
    return;
  for (const QString& item : sheet) {
    const ToolLeftovers leftovers(filepath_);
    if (!runReported(ArchiveCommands::add(target, item)).succeeded())
      leftovers.removeNew();
  }
  fillListBoxWithArchiveContent();
}

void archivePreviewMiniClass::btnRemove() {
  archivePreviewWindowClass* window = miniArchiveWindow_.get();
  window->showProblem({});
  QModelIndexList selected = window->openedArchiveTableView()->selectionModel()->selectedRows();
  if (window->theArrayController()->rowCount() == selected.size()) {
    services_.dialogs.alert(
        QStringLiteral("Attention"),
        QStringLiteral("You have to leave at last one file or directory in the archive."),
        QStringLiteral("OK"));
    return;
  }
  // The whole name, so that x.arj goes on to 7-Zip like any other archive.
  if (PathText::lastPathComponent(filepath_) == ArchiveType::Arj) {
    services_.dialogs.alert(
        QStringLiteral("ARJ Archive"),
        QStringLiteral("Deleting files from ARJ archives is still not available"),
        QStringLiteral("OK"));
    return;
  }
  const QStringList names = selectedNames();
  if (names.isEmpty())
    return;
  const QString program = MiniArchiveCommands::deletion(filepath_, QString()).program;
  if (refuses(LiteralNames::firstUnsafe(
          program, QStringList{PathText::lastPathComponent(filepath_)} + names)))
    return;
  if (program == ToolLocations::sevenZip() && refusesListedNames(names))
    return;
  std::sort(selected.begin(), selected.end());
  const int first = selected.first().row();
  QTableView* table = window->openedArchiveTableView();
  for (const QString& name : names)
    deleteFileFromArchiveWithName(name);
  fillListBoxWithArchiveContent();
  // The entry after the deleted ones has moved up into the first's row.
  table->selectRow(std::min(first, window->theArrayController()->rowCount() - 1));
}

void archivePreviewMiniClass::deleteFileFromArchiveWithName(const QString& name) {
  const ToolLeftovers leftovers(filepath_);
  if (!runReported(MiniArchiveCommands::deletion(filepath_, name)).succeeded())
    leftovers.removeNew();
}

void archivePreviewMiniClass::btnExtract() {
  archivePreviewWindowClass* window = miniArchiveWindow_.get();
  window->showProblem({});
  const QStringList names = selectedNames();
  if (names.isEmpty())
    return;
  const QString destination =
      services_.dialogs
          .chooseToOpen(
              window, Dialogs::OpenPanel::folder(QStringLiteral("Select directory to extract to")))
          .value(0);
  if (destination.isEmpty())
    return;
  const QString type = ArchiveType::ofPath(filepath_);
  if (type == ArchiveType::Rar || type == ArchiveType::Arj || type == ArchiveType::Lha) {
    services_.dialogs.alert(
        QStringLiteral("Archive not supported"),
        QStringLiteral("Extracting files from this type of archives is not supported."),
        QStringLiteral("OK"));
    return;
  }
  const bool show = PreferencesStore::isYes(PreferenceKeys::kOpenDestinationAfterExtraction);
  const bool sound = PreferencesStore::isYes(PreferenceKeys::kPlaySoundWhenDone);
  // Only zip and 7z entries are extracted; other types pass silently.
  if (type == ArchiveType::Zip || type == ArchiveType::SevenZip) {
    if (refusesListedNames(names))
      return;
    // Each run answers every question with yes, so existing files are
    // replaced: nothing runs when that would lose them.
    const ArchiveCommands::Archive target{type, filepath_};
    const ExtractionGuard guard = ExtractionGuard::check(
        services_.runner, {target, destination, QString(), true, encrypted_, names});
    if (guard.verdict != ExtractionGuard::Verdict::Go) {
      services_.dialogs.alert(guard.title(), guard.message(), QStringLiteral("OK"));
      return;
    }
    for (const QString& name : names)
      runReported(ArchiveCommands::extractEntry(target, name, destination, QString()));
  }
  if (show)
    services_.desktop.showFolder(destination);
  if (sound)
    services_.desktop.beep();
}

// An invisible window would still take the clicks meant for what lies
// under it, so the faded browser goes away.
void archivePreviewMiniClass::btnQuit() {
  archivePreviewWindowClass* window = miniArchiveWindow_.get();
  FloatingWindow::fadeTo(&contextWindow_, contextMenuWindowClass::kOpacity);
  connect(FloatingWindow::fadeTo(window, 0.0), &QAbstractAnimation::finished, window,
          &QWidget::hide);
}

ToolResult archivePreviewMiniClass::runReported(const ToolRun& run) {
  ToolResult result = services_.runner.run(run);
  if (const std::optional<ToolProblem> problem = ToolProblem::of(run, result))
    miniArchiveWindow_->showProblem(problem->message);
  return result;
}

QStringList archivePreviewMiniClass::selectedNames() const {
  QModelIndexList selected =
      miniArchiveWindow_->openedArchiveTableView()->selectionModel()->selectedRows();
  std::sort(selected.begin(), selected.end());
  QStringList names;
  for (const QModelIndex& row : selected)
    names << row.data(archivePreviewWindowClass::kFileNameRole).toString();
  return names;
}

QStringList archivePreviewMiniClass::allNames() const {
  const QStandardItemModel* rows = miniArchiveWindow_->theArrayController();
  QStringList names;
  for (int row = 0; row < rows->rowCount(); ++row)
    names << rows->item(row)->data(archivePreviewWindowClass::kFileNameRole).toString();
  return names;
}

bool archivePreviewMiniClass::refuses(const QString& unsafeName) {
  if (unsafeName.isEmpty())
    return false;
  const LiteralNames::Refusal refusal = LiteralNames::refusalOf(unsafeName);
  services_.dialogs.alert(refusal.title, refusal.message, QStringLiteral("OK"));
  return true;
}

// The names of a 7-Zip listing, where a control character shows as "_".
bool archivePreviewMiniClass::refusesListedNames(const QStringList& chosen) {
  const QString type = ArchiveType::ofPath(filepath_);
  if (type != ArchiveType::Zip && type != ArchiveType::SevenZip && type != ArchiveType::Tar)
    return false;
  const QString name =
      ListedNames::firstAmbiguous(services_.runner, filepath_, QString(), allNames(), chosen);
  if (name.isEmpty())
    return false;
  services_.dialogs.alert(ListedNames::title(), ListedNames::message(name), QStringLiteral("OK"));
  return true;
}

LhaVersion archivePreviewMiniClass::lhaVersion() {
  if (!lhaVersion_)
    lhaVersion_ = probeLhaVersion(services_.runner);
  return *lhaVersion_;
}
