#include "app/MainWindowBuilder.h"

#include "app/DropZone.h"
#include "app/FoldingOptions.h"
#include "create/CreateTab.h"
#include "engine/EntriesModel.h"
#include "engine/EntriesProxy.h"
#include "engine/OperationStatus.h"
#include "platform/ObjectNames.h"
#include "platform/PreferencesStore.h"
#include "platform/ResourceIcons.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QDockWidget>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QScrollArea>
#include <QSplitter>
#include <QStatusBar>
#include <QTabWidget>
#include <QTableView>
#include <QTextDocument>
#include <QToolBar>
#include <QVBoxLayout>

namespace {

constexpr int kArchiveIconSize = 64;
constexpr int kRowHeight = 24;

QLineEdit* fieldNamed(const char* objectName) {
  auto* field = named(new QLineEdit, objectName);
  field->setReadOnly(true);
  field->setFrame(false);
  field->setFocusPolicy(Qt::ClickFocus);
  field->setStyleSheet(QStringLiteral("QLineEdit { background: transparent; }"));
  return field;
}

void buildArchiveHeader(MainWindowUi& ui, QVBoxLayout* page) {
  auto* header = new QHBoxLayout;
  ui.archiveIconView = named(new QLabel, "archiveIconView");
  ui.archiveIconView->setFixedSize(kArchiveIconSize, kArchiveIconSize);
  ui.archiveIconView->setPixmap(
      ResourceIcons::named(QStringLiteral("archive")).pixmap(kArchiveIconSize));
  header->addWidget(ui.archiveIconView, 0, Qt::AlignTop);

  ui.filename = fieldNamed("filename");
  QFont nameFont = ui.filename->font();
  nameFont.setPointSizeF(nameFont.pointSizeF() * 1.3);
  nameFont.setBold(true);
  ui.filename->setFont(nameFont);
  ui.filename->setPlaceholderText(QObject::tr("No archive open"));
  ui.filepath = fieldNamed("filepath");
  ui.archivetype = fieldNamed("archivetype");
  ui.filesize = fieldNamed("filesize");
  ui.CRC32TextBox = fieldNamed("CRC32TextBox");
  ui.fieldOpenedArchiveNumberOfFiles = fieldNamed("fieldOpenedArchiveNumberOfFiles");

  auto* details = new QFormLayout;
  details->setHorizontalSpacing(12);
  details->setVerticalSpacing(2);
  details->addRow(QObject::tr("Location:"), ui.filepath);
  auto* facts = new QHBoxLayout;
  for (auto [label, field] :
       {std::pair{QObject::tr("Type:"), ui.archivetype},
        std::pair{QObject::tr("Size:"), ui.filesize},
        std::pair{QObject::tr("CRC32:"), ui.CRC32TextBox},
        std::pair{QObject::tr("Files:"), ui.fieldOpenedArchiveNumberOfFiles}}) {
    auto* caption = new QLabel(label);
    caption->setBuddy(field);
    facts->addWidget(caption);
    facts->addWidget(field, 1);
  }
  details->addRow(facts);

  auto* text = new QVBoxLayout;
  text->addWidget(ui.filename);
  text->addLayout(details);
  header->addLayout(text, 1);
  page->addLayout(header);
}

QTableView* buildEntriesTable(MainWindowUi& ui, QWidget* parent) {
  ui.oppenedArchiveArrayController = new EntriesModel(parent);
  ui.oppenedArchiveArrayController->setObjectName(QStringLiteral("oppenedArchiveArrayController"));
  ui.entriesProxy = new EntriesProxy(ui.oppenedArchiveArrayController, parent);
  auto* table = named(new QTableView, "openedArchiveTableView");
  table->setModel(ui.entriesProxy);
  table->setSelectionBehavior(QAbstractItemView::SelectRows);
  table->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table->setAlternatingRowColors(true);
  table->setShowGrid(false);
  table->setWordWrap(false);
  table->setIconSize(QSize(18, 18));
  table->setAttribute(Qt::WA_MacShowFocusRect, false);
  table->verticalHeader()->hide();
  table->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
  table->verticalHeader()->setDefaultSectionSize(kRowHeight);
  QHeaderView* columns = table->horizontalHeader();
  columns->setHighlightSections(false);
  columns->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  columns->setSectionResizeMode(QHeaderView::Interactive);
  columns->setSectionResizeMode(EntriesModel::Name, QHeaderView::Stretch);
  columns->resizeSection(EntriesModel::OriginalSize, 110);
  columns->resizeSection(EntriesModel::PackedSize, 110);
  columns->resizeSection(EntriesModel::Crc32, 100);
  columns->resizeSection(EntriesModel::DateModified, 200);
  columns->setSortIndicatorShown(true);
  // No indicator: the rows stay in the tool's order until a header is clicked.
  columns->setSortIndicator(-1, Qt::AscendingOrder);
  table->setSortingEnabled(true);
  ui.openedArchiveTableView = table;
  return table;
}

QLineEdit* buildEntriesFilter(MainWindowUi& ui) {
  ui.entriesFilter = named(new QLineEdit, "entriesFilter");
  ui.entriesFilter->setPlaceholderText(QObject::tr("Filter by name (Ctrl+F)"));
  ui.entriesFilter->setClearButtonEnabled(true);
  if (QIcon::hasThemeIcon(QStringLiteral("edit-find")))
    ui.entriesFilter->addAction(QIcon::fromTheme(QStringLiteral("edit-find")),
                                QLineEdit::LeadingPosition);
  QObject::connect(ui.entriesFilter, &QLineEdit::textChanged, ui.entriesProxy,
                   &EntriesProxy::setNameFilter);
  auto* find = new QAction(QObject::tr("&Find"), ui.entriesFilter);
  find->setShortcut(QKeySequence::Find);
  find->setShortcutContext(Qt::WindowShortcut);
  QObject::connect(find, &QAction::triggered, ui.entriesFilter,
                   [field = ui.entriesFilter, tabs = ui.tabContainer] {
                     tabs->setCurrentIndex(0);
                     field->setFocus(Qt::ShortcutFocusReason);
                     field->selectAll();
                   });
  ui.mainWindow->addAction(find);
  // Enter goes on to the rows found; Escape gives up the search.
  QObject::connect(ui.entriesFilter, &QLineEdit::returnPressed, ui.openedArchiveTableView,
                   [table = ui.openedArchiveTableView] { table->setFocus(Qt::OtherFocusReason); });
  auto* giveUp = new QAction(ui.entriesFilter);
  giveUp->setShortcut(Qt::Key_Escape);
  giveUp->setShortcutContext(Qt::WidgetShortcut);
  QObject::connect(giveUp, &QAction::triggered, ui.entriesFilter,
                   [field = ui.entriesFilter, table = ui.openedArchiveTableView] {
                     field->clear();
                     table->setFocus(Qt::OtherFocusReason);
                   });
  ui.entriesFilter->addAction(giveUp);
  return ui.entriesFilter;
}

// Start-up puts the stored values into these (AppController).
QCheckBox* optionNamed(const char* objectName, const QString& text) {
  return named(new QCheckBox(text), objectName);
}

FoldingOptions* buildExtractionOptions(MainWindowUi& ui) {
  ui.chkCreateSurroundingFolderBeforeExtracting =
      optionNamed("chkCreateSurroundingFolderBeforeExtracting",
                  QObject::tr("Extract into a folder named after the archive"));
  ui.chkOverwriteExistingFiles =
      optionNamed("chkOverwriteExistingFiles", QObject::tr("Overwrite existing files"));
  ui.chkOpenDestinationAfterExtraction =
      optionNamed("chkOpenDestinationAfterExtraction", QObject::tr("Show the folder when done"));
  ui.chkPlaySoundWhenDone =
      optionNamed("chkPlaySoundWhenDone", QObject::tr("Play a sound when done"));
  ui.chkTrashAfterExtracting =
      optionNamed("chkTrashAfterExtracting",
                  QObject::tr("Move archives opened from the file manager to the trash"));
  return new FoldingOptions(
      {ui.chkCreateSurroundingFolderBeforeExtracting, ui.chkOverwriteExistingFiles,
       ui.chkOpenDestinationAfterExtraction, ui.chkPlaySoundWhenDone, ui.chkTrashAfterExtracting},
      3);
}

QWidget* buildArchiveTab(MainWindowUi& ui) {
  auto* page = new QWidget;
  auto* layout = new QVBoxLayout(page);
  buildArchiveHeader(ui, layout);

  auto* splitter = new QSplitter(Qt::Vertical);
  auto* listing = new QWidget;
  auto* listingLayout = new QVBoxLayout(listing);
  listingLayout->setContentsMargins(0, 0, 0, 0);
  listingLayout->addWidget(buildEntriesTable(ui, page));
  listingLayout->insertWidget(0, buildEntriesFilter(ui));
  splitter->addWidget(listing);
  auto* lower = new QWidget;
  auto* lowerLayout = new QVBoxLayout(lower);
  lowerLayout->setContentsMargins(0, 0, 0, 0);
  FoldingOptions* options = buildExtractionOptions(ui);
  options->watch(page);
  lowerLayout->addWidget(options);
  ui.fileContentView = named(new QPlainTextEdit, "fileContentView");
  ui.fileContentView->setReadOnly(true);
  ui.fileContentView->setPlaceholderText(
      QObject::tr("Messages of the last operation appear here."));
  lowerLayout->addWidget(ui.fileContentView);
  splitter->addWidget(lower);
  splitter->setStretchFactor(0, 4);
  splitter->setStretchFactor(1, 1);
  splitter->setChildrenCollapsible(false);
  // The listing gets the room; the messages start with room for the
  // three lines of the longest report, the last one empty.
  QPlainTextEdit* messages = ui.fileContentView;
  const int margins =
      static_cast<int>(2 * (messages->frameWidth() + messages->document()->documentMargin()));
  messages->setMinimumHeight(messages->fontMetrics().lineSpacing() * 7 / 2 + margins);
  splitter->setSizes({4000, 1});
  layout->addWidget(splitter, 1);
  return page;
}

void buildMenusAndToolbar(MainWindowUi& ui) {
  QMainWindow* window = ui.mainWindow;
  ui.openAction = new QAction(
      ResourceIcons::themed(QStringLiteral("document-open"), QStringLiteral("action-open")),
      QObject::tr("&Open…"), window);
  ui.openAction->setObjectName(QStringLiteral("btnOpenAction"));
  ui.openAction->setShortcut(QKeySequence::Open);
  ui.openAction->setToolTip(QObject::tr("Open an archive (Ctrl+O)"));

  ui.btnSwitchToCreate = new QAction(
      ResourceIcons::themed(QStringLiteral("archive-insert"), QStringLiteral("action-create")),
      QObject::tr("&New Archive"), window);
  ui.btnSwitchToCreate->setObjectName(QStringLiteral("btnSwitchToCreate"));
  ui.btnSwitchToCreate->setShortcut(QKeySequence::New);
  ui.btnSwitchToCreate->setToolTip(QObject::tr("Put together a new archive (Ctrl+N)"));

  const auto action = [window](const char* objectName, const QString& text, const char* theme,
                               const char* fallback) {
    auto* created = new QAction(
        ResourceIcons::themed(QString::fromLatin1(theme), QString::fromLatin1(fallback)), text,
        window);
    created->setObjectName(QString::fromLatin1(objectName));
    return created;
  };
  ui.btnExtractAction =
      action("btnExtractAction", QObject::tr("E&xtract…"), "archive-extract", "action-extract");
  ui.btnExtractAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
  ui.btnExtractSelected = action("btnExtractSelected", QObject::tr("Extract &Selected…"),
                                 "archive-extract", "action-extract");
  ui.btnExtractSelected->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_E));
  ui.btnTestAction =
      action("btnTestAction", QObject::tr("&Test"), "document-preview-archive", "action-test");
  ui.btnTestAction->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_T));
  ui.addFilesToArchive =
      action("addFilesToArchive", QObject::tr("&Add Files…"), "list-add", "action-add");
  ui.btnDeleteSelectedFilesFromArchive = action(
      "btnDeleteSelectedFilesFromArchive", QObject::tr("&Delete"), "edit-delete", "action-delete");
  // Delete acts on the entries table only: the create tab's list has its own.
  ui.btnDeleteSelectedFilesFromArchive->setShortcut(QKeySequence::Delete);
  ui.btnDeleteSelectedFilesFromArchive->setShortcutContext(Qt::WidgetShortcut);
  ui.openedArchiveTableView->addAction(ui.btnDeleteSelectedFilesFromArchive);
  ui.btnOpenArchiveFolder =
      action("btnOpenArchiveFolder", QObject::tr("Show in &Folder"), "folder-open", "folder");
  ui.btnConvert = action("btnConvert", QObject::tr("Con&vert…"), "document-save-as", "archive");
  ui.btnConvert->setToolTip(QObject::tr("Convert the archive into another format"));
  ui.btnMD5Generator =
      action("btnMD5Generator", QObject::tr("&MD5 Checksum"), "document-properties", "document");

  ui.quitAction = new QAction(QIcon::fromTheme(QStringLiteral("application-exit")),
                              QObject::tr("&Quit"), window);
  ui.quitAction->setShortcut(QKeySequence::Quit);

  ui.btnExpandArchiveFilePreview =
      new QAction(QIcon::fromTheme(QStringLiteral("view-preview"),
                                   ResourceIcons::named(QStringLiteral("image"))),
                  QObject::tr("&Preview"), window);
  ui.btnExpandArchiveFilePreview->setObjectName(QStringLiteral("btnExpandArchiveFilePreview"));
  ui.btnExpandArchiveFilePreview->setCheckable(true);
  ui.btnExpandArchiveFilePreview->setShortcut(QKeySequence(Qt::Key_F3));

  QMenu* file = window->menuBar()->addMenu(QObject::tr("&File"));
  file->addAction(ui.openAction);
  file->addAction(ui.btnSwitchToCreate);
  ui.openRecentMenu = file->addMenu(QObject::tr("Open &Recent"));
  ui.openRecentMenu->setObjectName(QStringLiteral("openRecentMenu"));
  file->addSeparator();
  file->addAction(ui.btnOpenArchiveFolder);
  file->addSeparator();
  file->addAction(ui.quitAction);
  QMenu* archive = window->menuBar()->addMenu(QObject::tr("&Archive"));
  archive->addActions(
      {ui.btnExtractAction, ui.btnExtractSelected, ui.btnTestAction, ui.btnConvert});
  archive->addSeparator();
  archive->addActions({ui.addFilesToArchive, ui.btnDeleteSelectedFilesFromArchive});
  QMenu* view = window->menuBar()->addMenu(QObject::tr("&View"));
  view->addAction(ui.btnExpandArchiveFilePreview);
  ui.aboutAction = new QAction(QIcon::fromTheme(QStringLiteral("help-about")),
                               QObject::tr("&About Quillet"), window);
  ui.aboutAction->setObjectName(QStringLiteral("menuAbout"));

  QToolBar* toolbar = window->addToolBar(QObject::tr("Main"));
  toolbar->setObjectName(QStringLiteral("mainToolbar"));
  toolbar->setMovable(false);
  toolbar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  toolbar->setIconSize(QSize(28, 28));
  toolbar->addAction(ui.openAction);
  toolbar->addAction(ui.btnSwitchToCreate);
  toolbar->addSeparator();
  toolbar->addActions({ui.btnExtractAction, ui.btnTestAction, ui.addFilesToArchive,
                       ui.btnDeleteSelectedFilesFromArchive, ui.btnConvert});
  toolbar->addSeparator();
  toolbar->addAction(ui.btnExpandArchiveFilePreview);
}

void buildShellMenus(const MainWindowUi& ui, ShellActions& shell) {
  QMainWindow* window = ui.mainWindow;
  const auto action = [window](const char* objectName, const QString& text, const char* theme) {
    auto* created = new QAction(QIcon::fromTheme(QString::fromLatin1(theme)), text, window);
    created->setObjectName(QString::fromLatin1(objectName));
    return created;
  };
  shell.btnBackup = action("btnBackup", QObject::tr("Home-Folder &Backup"), "document-save");
  shell.btnDMGUtil = action("btnDMGUtil", QObject::tr("&Disk Image"), "media-optical");
  QMenu* tools = window->menuBar()->addMenu(QObject::tr("&Tools"));
  tools->addActions({shell.btnBackup, shell.btnDMGUtil, ui.btnMD5Generator});

  shell.menuPreferences =
      action("menuPreferences", QObject::tr("&Preferences…"), "preferences-system");
  // Most Linux desktops bind no standard key for preferences; Ctrl+, is the
  // one their applications use.
  const QList<QKeySequence> preferencesKeys = QKeySequence::keyBindings(QKeySequence::Preferences);
  shell.menuPreferences->setShortcuts(
      preferencesKeys.isEmpty() ? QList<QKeySequence>{QKeySequence(Qt::CTRL | Qt::Key_Comma)}
                                : preferencesKeys);
  shell.menuPreferences->setMenuRole(QAction::PreferencesRole);
  window->menuBar()->addMenu(QObject::tr("&Settings"))->addAction(shell.menuPreferences);

  shell.btnWeb = action("btnWeb", QObject::tr("Quillet &Website"), "internet-web-browser");
  shell.btnCheckForUpdates =
      action("btnCheckForUpdates", QObject::tr("Check for &Updates"), "system-software-update");
  shell.mnuLatestVersionChanges =
      action("mnuLatestVersionChanges", QObject::tr("&Latest Version Changes"), "view-history");
  shell.btnBlog = action("btnBlog", QObject::tr("&Blog"), "");
  shell.btnFacebook = action("btnFacebook", QObject::tr("Quillet on &Facebook"), "");
  shell.btnTwitter = action("btnTwitter", QObject::tr("Quillet on &Twitter"), "");
  shell.menuAbout = ui.aboutAction;
  QMenu* help = window->menuBar()->addMenu(QObject::tr("&Help"));
  help->addActions({shell.btnWeb, shell.btnCheckForUpdates, shell.mnuLatestVersionChanges});
  help->addSeparator();
  help->addActions({shell.btnBlog, shell.btnFacebook, shell.btnTwitter});
  help->addSeparator();
  help->addAction(shell.menuAbout);
}

void buildSidePanels(MainWindowUi& ui, Dialogs& dialogs) {
  ui.dropZone = new DropZone(dialogs, ui.mainWindow);
  ui.mainWindow->addDockWidget(Qt::RightDockWidgetArea, ui.dropZone);
  ui.dropZone->hide();

  // The preview (FilePreview) puts its panel in.
  ui.drawerObject = named(new QDockWidget(QObject::tr("Preview"), ui.mainWindow), "drawerObject");
  ui.drawerObject->setFeatures(QDockWidget::DockWidgetClosable);
  ui.mainWindow->addDockWidget(Qt::RightDockWidgetArea, ui.drawerObject);
  ui.drawerObject->hide();
}

// A page of settings scrolls in a small window instead of making the
// whole window taller than the screen allows.
QScrollArea* scrolling(QWidget* page) {
  auto* area = new QScrollArea;
  area->setWidget(page);
  area->setWidgetResizable(true);
  area->setFrameShape(QFrame::NoFrame);
  return area;
}

}  // namespace

MainWindowUi buildMainWindow(Dialogs& dialogs, CreateTab* createTab, ShellActions& shell) {
  MainWindowUi ui;
  ui.mainWindow = named(new QMainWindow, "mainWindow");
  ui.mainWindow->setWindowTitle(QStringLiteral("Quillet"));
  ui.mainWindow->setWindowIcon(ResourceIcons::named(QStringLiteral("quillet")));
  ui.mainWindow->resize(960, 640);

  ui.tabContainer = named(new QTabWidget, "tabContainer");
  ui.tabContainer->setDocumentMode(true);
  ui.tabContainer->addTab(buildArchiveTab(ui), QObject::tr("Archive"));
  ui.tabContainer->addTab(createTab, QObject::tr("Create"));
  ui.backupTab = named(new QWidget, "backupTab");
  ui.tabContainer->addTab(scrolling(ui.backupTab), QObject::tr("Backup"));
  ui.diskImageTab = named(new QWidget, "diskImageTab");
  ui.tabContainer->addTab(scrolling(ui.diskImageTab), QObject::tr("Disk image"));
  ui.mainWindow->setCentralWidget(ui.tabContainer);

  buildMenusAndToolbar(ui);
  buildShellMenus(ui, shell);
  buildSidePanels(ui, dialogs);

  ui.operationStatus = new OperationStatus(ui.mainWindow->statusBar());
  ui.loadingArchiveListingLoader = named(new QProgressBar, "loadingArchiveListingLoader");
  ui.loadingArchiveListingLoader->setRange(0, 0);
  ui.loadingArchiveListingLoader->setMaximumWidth(140);
  ui.loadingArchiveListingLoader->setTextVisible(false);
  ui.loadingArchiveListingLoader->hide();
  ui.mainWindow->statusBar()->addPermanentWidget(ui.loadingArchiveListingLoader);
  ui.compressionSpin = named(new QProgressBar, "compressionSpin");
  ui.compressionSpin->setRange(0, 0);
  ui.compressionSpin->setMaximumWidth(140);
  ui.compressionSpin->setTextVisible(false);
  ui.compressionSpin->setToolTip(QObject::tr("Compressing"));
  ui.compressionSpin->hide();
  ui.mainWindow->statusBar()->addPermanentWidget(ui.compressionSpin);

  ui.sourceArchive4ConvertionIcon =
      named(new QLabel(ui.mainWindow), "sourceArchive4ConvertionIcon");
  ui.sourceArchive4ConvertionIcon->hide();
  return ui;
}
