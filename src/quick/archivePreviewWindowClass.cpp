#include "quick/archivePreviewWindowClass.h"

#include "platform/ObjectNames.h"
#include "platform/ResourceIcons.h"
#include "quick/FloatingWindow.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QSizeGrip>
#include <QStandardItemModel>
#include <QTableView>

namespace {

constexpr QSize kInitialSize(340, 400);
constexpr QSize kSmallestSize(260, 220);
constexpr int kRowIconSize = 16;
constexpr QSize kLoaderSize(64, 8);

QPushButton* button(const char* objectName, const QString& themeIcon, const QString& fallback,
                    const QString& text) {
  auto* made = named(new QPushButton(ResourceIcons::themed(themeIcon, fallback), text), objectName);
  made->setAutoDefault(false);
  return made;
}

}  // namespace

archivePreviewWindowClass::archivePreviewWindowClass(QWidget* parent)
    : QWidget(parent, Qt::Tool | Qt::FramelessWindowHint | Qt::WindowStaysOnTopHint),
      name_(new QLabel),
      table_(new QTableView),
      rows_(new QStandardItemModel(this)),
      count_(new QLabel),
      loader_(new QProgressBar),
      problem_(new QLabel),
      add_(button("btnAdd", "list-add", "action-add", tr("&Add…"))),
      remove_(button("btnRemove", "list-remove", "action-delete", tr("&Remove"))),
      extract_(button("btnExtract", "archive-extract", "action-extract", tr("E&xtract…"))),
      quit_(new QPushButton(tr("&Close"))) {
  setObjectName(QStringLiteral("miniArchiveWindow"));
  resize(kInitialSize);
  setMinimumSize(kSmallestSize);

  name_->setTextFormat(Qt::PlainText);
  QFont bold = name_->font();
  bold.setBold(true);
  name_->setFont(bold);
  name_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);

  rows_->setObjectName(QStringLiteral("theArrayController"));
  table_->setObjectName(QStringLiteral("openedArchiveTableView"));
  table_->setModel(rows_);
  table_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  table_->setSelectionBehavior(QAbstractItemView::SelectRows);
  table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  table_->setIconSize(QSize(kRowIconSize, kRowIconSize));
  table_->setShowGrid(false);
  table_->setAlternatingRowColors(true);
  table_->setWordWrap(false);
  table_->setTextElideMode(Qt::ElideMiddle);
  table_->horizontalHeader()->hide();
  table_->horizontalHeader()->setStretchLastSection(true);
  table_->verticalHeader()->hide();
  table_->verticalHeader()->setDefaultSectionSize(table_->fontMetrics().height() + 6);

  count_->setObjectName(QStringLiteral("fieldOpenedArchiveNumberOfFiles"));
  count_->setTextFormat(Qt::PlainText);
  loader_->setObjectName(QStringLiteral("loadingArchiveListingLoader"));
  loader_->setTextVisible(false);
  loader_->setFixedSize(kLoaderSize);
  loader_->hide();
  problem_->setObjectName(QStringLiteral("miniArchiveProblem"));
  problem_->setTextFormat(Qt::PlainText);
  problem_->setWordWrap(true);
  problem_->setForegroundRole(QPalette::PlaceholderText);
  problem_->hide();

  remove_->setShortcut(QKeySequence::Delete);
  extract_->setDefault(true);
  quit_->setObjectName(QStringLiteral("btnQuit"));
  quit_->setAutoDefault(false);
  quit_->setShortcut(QKeySequence::Cancel);
  add_->setShortcut(QKeySequence(Qt::Key_Insert));

  auto* countCaption = new QLabel(tr("Items:"));
  countCaption->setForegroundRole(QPalette::PlaceholderText);
  auto* status = new QHBoxLayout;
  status->addWidget(countCaption);
  status->addWidget(count_);
  status->addStretch();
  status->addWidget(loader_);

  auto* buttons = new QHBoxLayout;
  buttons->addWidget(add_);
  buttons->addWidget(remove_);
  buttons->addStretch();
  buttons->addWidget(extract_);
  buttons->addWidget(quit_);

  auto* layout = new QGridLayout(this);
  layout->setContentsMargins(12, 10, 12, 4);
  layout->addWidget(name_, 0, 0, 1, 2);
  layout->addWidget(table_, 1, 0, 1, 2);
  layout->addLayout(status, 2, 0, 1, 2);
  layout->addWidget(problem_, 3, 0, 1, 2);
  layout->addLayout(buttons, 4, 0, 1, 2);
  layout->addWidget(new QSizeGrip(this), 5, 1, Qt::AlignRight | Qt::AlignBottom);
  layout->setRowStretch(1, 1);

  connect(table_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &archivePreviewWindowClass::enableSelectionActions);
  connect(rows_, &QAbstractItemModel::modelReset, this,
          &archivePreviewWindowClass::enableSelectionActions);
  connect(rows_, &QAbstractItemModel::rowsRemoved, this,
          &archivePreviewWindowClass::enableSelectionActions);
  enableSelectionActions();
}

void archivePreviewWindowClass::showArchiveName(const QString& name) {
  name_->setToolTip(name);
  elideName();
}

void archivePreviewWindowClass::elideName() {
  name_->setText(name_->fontMetrics().elidedText(name_->toolTip(), Qt::ElideMiddle,
                                                 name_->contentsRect().width()));
}

void archivePreviewWindowClass::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  elideName();
}

void archivePreviewWindowClass::showProblem(const QString& message) {
  problem_->setText(message);
  problem_->setVisible(!message.isEmpty());
}

// The browser starts it for arj listings and leaves it running.
void archivePreviewWindowClass::startLoader() {
  loader_->setRange(0, 0);
  loader_->show();
}

void archivePreviewWindowClass::enableSelectionActions() {
  const bool selected = table_->selectionModel()->hasSelection();
  remove_->setEnabled(selected);
  extract_->setEnabled(selected);
}

void archivePreviewWindowClass::paintEvent(QPaintEvent*) {
  FloatingWindow::paintPanel(this);
}
