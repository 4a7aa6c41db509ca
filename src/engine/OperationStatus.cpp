#include "engine/OperationStatus.h"

#include "platform/ObjectNames.h"
#include "platform/ResourceIcons.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QStyle>
#include <QVBoxLayout>

namespace {

constexpr int kIconSize = 16;

QPushButton* flatButton(const QString& text, const char* objectName) {
  auto* button = named(new QPushButton(text), objectName);
  button->setFlat(true);
  button->setFocusPolicy(Qt::TabFocus);
  button->hide();
  return button;
}

}  // namespace

OperationStatus::OperationStatus(QStatusBar* bar)
    : QWidget(bar),
      bar_(bar),
      icon_(new QLabel),
      text_(new QLabel),
      showFolder_(flatButton(tr("Show folder"), "btnShowOperationFolder")),
      details_(flatButton(tr("Details…"), "btnOperationDetails")),
      progress_(new QProgressBar),
      cancel_(flatButton(tr("Cancel"), "btnCancelOperation")) {
  setObjectName(QStringLiteral("operationStatus"));
  icon_->setFixedSize(kIconSize, kIconSize);
  icon_->hide();
  text_->setObjectName(QStringLiteral("operationStatusText"));
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  text_->setMinimumWidth(0);
  text_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(4, 0, 0, 0);
  layout->addWidget(icon_);
  layout->addWidget(text_, 1);
  layout->addWidget(showFolder_);
  layout->addWidget(details_);
  progress_->setRange(0, 0);
  progress_->setMaximumWidth(120);
  progress_->setTextVisible(false);
  progress_->hide();
  layout->addWidget(progress_);
  cancel_->setIcon(QIcon::fromTheme(QStringLiteral("process-stop")));
  layout->addWidget(cancel_);
  connect(cancel_, &QPushButton::clicked, this, &OperationStatus::cancelRequested);
  // Taking the bar's whole width, this shows the bar's plain messages too.
  bar->addPermanentWidget(this, 1);
  connect(bar, &QStatusBar::messageChanged, this, [this](const QString& message) {
    if (!settingMessage_)
      showNote(message);
  });
  connect(showFolder_, &QPushButton::clicked, this, [this] { emit showFolderRequested(folder_); });
  connect(details_, &QPushButton::clicked, this, &OperationStatus::showDetails);
}

void OperationStatus::showNote(const QString& text) {
  failed_ = false;
  folder_.clear();
  detailsText_.clear();
  icon_->hide();
  showFolder_->hide();
  details_->hide();
  text_->setText(text);
  text_->setToolTip(text);
}

void OperationStatus::showDone(const QString& text, const QString& folder) {
  {
    const QScopedValueRollback quiet(settingMessage_, true);
    bar_->showMessage(text);
  }
  showNote(text);
  folder_ = folder;
  icon_->setPixmap(
      ResourceIcons::themed(QStringLiteral("dialog-information"), QStringLiteral("quillet"))
          .pixmap(kIconSize));
  icon_->show();
  showFolder_->setVisible(!folder.isEmpty());
}

void OperationStatus::showFailure(const QString& text, const QString& details) {
  {
    const QScopedValueRollback quiet(settingMessage_, true);
    bar_->showMessage(text);
  }
  showNote(text);
  failed_ = true;
  detailsText_ = details;
  icon_->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(kIconSize));
  icon_->show();
  details_->setVisible(!details.trimmed().isEmpty());
}

void OperationStatus::clear() {
  {
    const QScopedValueRollback quiet(settingMessage_, true);
    bar_->clearMessage();
  }
  showNote(QString());
}

void OperationStatus::setRunning(bool running) {
  progress_->setVisible(running);
  cancel_->setVisible(running);
}

QString OperationStatus::placeText(const QString& folder) {
  const QString home = QDir::homePath();
  if (folder == home)
    return QStringLiteral("~");
  if (folder.startsWith(home + u'/'))
    return u'~' + folder.mid(home.size());
  return folder;
}

QString OperationStatus::counted(qsizetype count, const QString& one, const QString& many) {
  return QString::number(count) + u' ' + (count == 1 ? one : many);
}

QString OperationStatus::text() const {
  return text_->text();
}

void OperationStatus::showDetails() {
  auto* dialog = new QDialog(window());
  dialog->setObjectName(QStringLiteral("operationDetails"));
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setWindowTitle(tr("Details"));
  auto* layout = new QVBoxLayout(dialog);
  auto* summary = new QLabel(text_->text());
  summary->setWordWrap(true);
  layout->addWidget(summary);
  auto* output = new QPlainTextEdit(detailsText_);
  output->setObjectName(QStringLiteral("operationDetailsText"));
  output->setReadOnly(true);
  output->setLineWrapMode(QPlainTextEdit::NoWrap);
  output->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  layout->addWidget(output, 1);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons, &QDialogButtonBox::rejected, dialog, &QDialog::reject);
  layout->addWidget(buttons);
  dialog->resize(640, 360);
  dialog->show();
}
