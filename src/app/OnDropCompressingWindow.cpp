#include "app/OnDropCompressingWindow.h"

#include "app/CompressOnDrop.h"
#include "platform/Dialogs.h"
#include "platform/ObjectNames.h"
#include "platform/ResourceIcons.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScreen>

#include <cstdio>

namespace {

constexpr int kIconSize = 48;
constexpr int kLoaderWidth = 340;
constexpr int kSpinWidth = 48;

const QString kCompressing = QStringLiteral("Compressing...");

}  // namespace

OnDropCompressingWindow::OnDropCompressingWindow(Dialogs& dialogs, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint),
      dialogs_(dialogs),
      compressingArchiveName_(named(new QLabel, "compressingArchiveName")),
      compressingLoader_(named(new QProgressBar, "compressingLoader")),
      compressionSpin_(named(new QProgressBar, "compressionSpin")),
      compressingWindowStatus_(named(new QLabel(kCompressing), "compressingWindowStatus")) {
  setObjectName(QStringLiteral("compressingWindow"));
  setWindowTitle(tr("Compressing"));
  QFont bold = compressingArchiveName_->font();
  bold.setBold(true);
  compressingArchiveName_->setFont(bold);
  compressingArchiveName_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  compressingLoader_->setMinimumWidth(kLoaderWidth);
  compressingLoader_->setTextVisible(false);
  compressionSpin_->setRange(0, 0);
  compressionSpin_->setFixedWidth(kSpinWidth);
  compressionSpin_->setTextVisible(false);
  // The status keeps its place while the spinner is hidden.
  QSizePolicy keepPlace = compressionSpin_->sizePolicy();
  keepPlace.setRetainSizeWhenHidden(true);
  compressionSpin_->setSizePolicy(keepPlace);
  compressionSpin_->hide();
  compressingWindowStatus_->setWordWrap(true);

  auto* icon = new QLabel;
  icon->setPixmap(
      ResourceIcons::themed(QStringLiteral("application-x-archive"), QStringLiteral("archive"))
          .pixmap(kIconSize));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  buttons->button(QDialogButtonBox::Cancel)->setObjectName(QStringLiteral("btnCancelCompression"));
  connect(buttons, &QDialogButtonBox::rejected, this, &OnDropCompressingWindow::cancelPressed);

  auto* statusRow = new QHBoxLayout;
  statusRow->addWidget(compressionSpin_);
  statusRow->addWidget(compressingWindowStatus_, 1);
  auto* layout = new QGridLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->addWidget(icon, 0, 0, 3, 1, Qt::AlignTop);
  layout->addWidget(compressingArchiveName_, 0, 1);
  layout->addWidget(compressingLoader_, 1, 1);
  layout->addLayout(statusRow, 2, 1);
  layout->addWidget(buttons, 3, 0, 1, 2);
}

void OnDropCompressingWindow::compress(const OnDropRequest& request, ToolRunner& runner) {
  CompressOnDrop job(request, runner, *this);
  const QMetaObject::Connection cancel = connect(this, &OnDropCompressingWindow::cancelPressed,
                                                 this, [&job] { job.btnCancelCompression(); });
  job.run();
  disconnect(cancel);
}

void OnDropCompressingWindow::showCompressingWindow() {
  if (isVisible())
    return;
  centre();
  show();
  raise();
  activateWindow();
  compressingLoader_->setRange(0, 0);
  setCompressionSpinning(true);
}

void OnDropCompressingWindow::setCompressionSpinning(bool spinning) {
  compressionSpin_->setVisible(spinning);
}

void OnDropCompressingWindow::setCompressingArchiveName(const QString& name) {
  compressingArchiveName_->setText(name);
}

void OnDropCompressingWindow::setProgressRange(int maximum, int value) {
  compressingLoader_->setRange(0, maximum);
  compressingLoader_->setValue(value);
}

void OnDropCompressingWindow::setProgressValue(int value) {
  compressingLoader_->setValue(value);
}

void OnDropCompressingWindow::hideCompressingWindow() {
  hide();
  if (compressingLoader_->maximum() == 0)
    compressingLoader_->setRange(0, 1);
  compressingWindowStatus_->setText(kCompressing);
}

void OnDropCompressingWindow::alert(const QString& title, const QString& message) {
  dialogs_.alert(title, message, QStringLiteral("OK"));
}

// Quillet quits once the files are packed, so the line goes to standard
// error as well.
void OnDropCompressingWindow::reportFailure(const QString& message) {
  compressingWindowStatus_->setText(message);
  std::fprintf(stderr, "quillet: %s\n", message.toUtf8().constData());
}

void OnDropCompressingWindow::centre() {
  adjustSize();
  const QScreen* screen = parentWidget() ? parentWidget()->screen() : this->screen();
  if (!screen)
    return;
  QRect frame = frameGeometry();
  frame.moveCenter(parentWidget() && parentWidget()->isVisible()
                       ? parentWidget()->geometry().center()
                       : screen->availableGeometry().center());
  move(frame.topLeft());
}
