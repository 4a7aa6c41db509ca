#include "quick/contextMenuClass.h"

#include "engine/ArchiveType.h"
#include "engine/PathText.h"
#include "platform/ResourceIcons.h"
#include "quick/FloatingWindow.h"
#include "quick/PanelGeometry.h"
#include "quick/QuickExtractionWindow.h"
#include "quick/QuickPasswordDialog.h"
#include "quick/archivePreviewMiniClass.h"
#include "quick/contextMenuWindowClass.h"

#include <QCursor>
#include <QLineEdit>
#include <QPushButton>

contextMenuClass::contextMenuClass(Services services, QObject* parent)
    : QObject(parent),
      services_(std::move(services)),
      contextWindow_(std::make_unique<contextMenuWindowClass>()),
      extractWindow_(std::make_unique<QuickExtractionWindow>()),
      enterPasswordDlg_(std::make_unique<QuickPasswordDialog>()),
      extraction_(OneShotExtraction::Route::QuickPanel,
                  {services_.runner, services_.dialogs, services_.desktop, *extractWindow_}),
      miniArchiveBrowser_(
          std::make_unique<archivePreviewMiniClass>(services_, *contextWindow_, hiddenFileName_)) {
  connect(contextWindow_->extractButton(), &QPushButton::clicked, this,
          &contextMenuClass::btnDecompress);
  connect(contextWindow_->cancelButton(), &QPushButton::clicked, this,
          &contextMenuClass::btnCancel);
  connect(enterPasswordDlg_.get(), &QuickPasswordDialog::okPressed, this,
          &contextMenuClass::btnPasswordDlgOK);
  connect(enterPasswordDlg_.get(), &QuickPasswordDialog::cancelPressed, this,
          &contextMenuClass::btnPasswordDlgCancel);
}

contextMenuClass::~contextMenuClass() = default;

void contextMenuClass::setHiddenFileName(const QString& path) {
  hiddenFileName_ = path;
  const QString icon = ArchiveType::iconResource(ArchiveType::ofPath(path));
  contextWindow_->showArchive(PathText::lastPathComponent(path),
                              icon.isEmpty() ? QIcon() : ResourceIcons::named(icon));
}

void contextMenuClass::awakeFromNib() {
  contextWindow_->setWindowOpacity(0.0);
  contextWindow_->adjustSize();
  contextWindow_->move(PanelGeometry::placedAround(QCursor::pos(), contextWindow_->size()));
}

void contextMenuClass::fadeInPanel() {
  contextWindow_->setWindowOpacity(0.0);
  contextWindow_->show();
  contextWindow_->raise();
  contextWindow_->activateWindow();
  FloatingWindow::fadeTo(contextWindow_.get(), contextMenuWindowClass::kOpacity);
}

void contextMenuClass::btnDecompress() {
  contextWindow_->hide();
  extractWindow_->orderFront();
  const QString& path = hiddenFileName_;
  // Any other type leaves the window up as it is.
  if (!OneShotExtraction::isQuickPanelType(ArchiveType::ofPath(path)))
    return;
  extractWindow_->showArchive(path);
  if (extraction_.extract(path) == OneShotExtraction::Outcome::NeedsPassword) {
    if (!enterPasswordDlg_->isVisible()) {
      enterPasswordDlg_->presentFor(PathText::lastPathComponent(path));
      extractWindow_->hide();
    }
    return;
  }
  services_.terminate();
}

void contextMenuClass::btnPasswordDlgOK() {
  extractWindow_->orderFront();
  enterPasswordDlg_->hide();
  extraction_.extractWithPassword(extractWindow_->archiveShown(),
                                  enterPasswordDlg_->passwordTextField()->text());
  services_.terminate();
}

void contextMenuClass::btnPasswordDlgCancel() {
  services_.terminate();
}

void contextMenuClass::btnCancel() {
  services_.terminate();
}
