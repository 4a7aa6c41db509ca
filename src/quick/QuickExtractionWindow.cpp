#include "quick/QuickExtractionWindow.h"

#include "engine/ArchiveType.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"
#include "platform/ObjectNames.h"
#include "platform/ResourceIcons.h"
#include "quick/FloatingWindow.h"
#include "quick/PathLabel.h"

#include <QGridLayout>
#include <QLabel>
#include <QProgressBar>

#include <cstdio>

namespace {

constexpr int kIconSize = 64;
constexpr int kTextWidth = 340;

}  // namespace

QuickExtractionWindow::QuickExtractionWindow(QWidget* parent)
    : QWidget(parent, Qt::Window | Qt::WindowStaysOnTopHint),
      archiveTypeIcon_(named(new QLabel, "archiveTypeIcon")),
      filename_(named(new PathLabel, "filename")),
      filesize_(named(new QLabel, "filesize")),
      destinationPath_(named(new PathLabel, "destinationPath")),
      progressIndicator_(named(new QProgressBar, "progressIndicator")),
      extractionStatus_(named(new QLabel, "extractionStatus")),
      failures_(named(new QLabel, "extractionFailures")) {
  setObjectName(QStringLiteral("extractWindow"));
  setWindowTitle(tr("Extracting"));
  setWindowIcon(ResourceIcons::named(QStringLiteral("quillet")));

  archiveTypeIcon_->setPixmap(
      ResourceIcons::themed(QStringLiteral("package-x-generic"), QStringLiteral("archive"))
          .pixmap(kIconSize));
  archiveTypeIcon_->setFixedSize(kIconSize, kIconSize);
  filename_->setFixedWidth(kTextWidth);
  QFont bold = filename_->font();
  bold.setBold(true);
  filename_->setFont(bold);
  filesize_->setForegroundRole(QPalette::PlaceholderText);
  destinationPath_->setFixedWidth(kTextWidth);
  progressIndicator_->setTextVisible(false);
  progressIndicator_->setRange(0, 1);
  extractionStatus_->setTextFormat(Qt::PlainText);
  extractionStatus_->setFont(bold);
  failures_->setTextFormat(Qt::PlainText);
  failures_->setWordWrap(true);
  failures_->setFixedWidth(kTextWidth);
  failures_->hide();

  auto* destinationCaption = new QLabel(tr("Extracting into:"));
  destinationCaption->setForegroundRole(QPalette::PlaceholderText);
  auto* layout = new QGridLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->setHorizontalSpacing(14);
  layout->addWidget(archiveTypeIcon_, 0, 0, 4, 1, Qt::AlignTop);
  layout->addWidget(filename_, 0, 1);
  layout->addWidget(filesize_, 1, 1);
  layout->addWidget(destinationCaption, 2, 1);
  layout->addWidget(destinationPath_, 3, 1);
  layout->addWidget(progressIndicator_, 4, 1);
  layout->addWidget(extractionStatus_, 5, 1);
  layout->addWidget(failures_, 6, 1);
  layout->setRowMinimumHeight(4, 24);
}

void QuickExtractionWindow::orderFront() {
  FloatingWindow::orderFrontCentred(this);
}

void QuickExtractionWindow::showArchive(const QString& path) {
  setSpinning(true);
  filename_->setPath(PathText::lastPathComponent(path));
  destinationPath_->setPath(PathText::deletingPathExtension(path));
  filesize_->setText(SizeText::archiveFile(path));
  const QString icon = ArchiveType::iconResource(ArchiveType::ofPath(path));
  if (!icon.isEmpty())
    archiveTypeIcon_->setPixmap(ResourceIcons::named(icon).pixmap(kIconSize));
  extractionStatus_->setText(tr("Extracting…"));
}

void QuickExtractionWindow::setSpinning(bool spinning) {
  progressIndicator_->setRange(0, spinning ? 0 : 1);
  progressIndicator_->setValue(spinning ? 0 : 1);
}

QString QuickExtractionWindow::archiveShown() const {
  return PathText::deletingLastPathComponent(destinationPath_->path()) + u'/' + filename_->path();
}

void QuickExtractionWindow::showDone() {
  setSpinning(false);
  extractionStatus_->setText(QStringLiteral("DONE"));
}

void QuickExtractionWindow::reportFailure(const QString& message) {
  failures_->setText(failures_->text().isEmpty() ? message : failures_->text() + u'\n' + message);
  failures_->setMinimumHeight(failures_->heightForWidth(failures_->maximumWidth()));
  failures_->show();
  std::fprintf(stderr, "quillet: %s\n", message.toUtf8().constData());
}
