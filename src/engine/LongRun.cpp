#include "engine/LongRun.h"

#include "engine/MainWindowUi.h"
#include "engine/OperationStatus.h"
#include "platform/WindowPlacement.h"

#include <QApplication>
#include <QMainWindow>
#include <QTabWidget>
#include <QTableView>
#include <QToolBar>

LongRun::LongRun(const EngineContext& context, QWidget* progressWindow) : context_(context) {
  QApplication::setOverrideCursor(Qt::BusyCursor);
  // The window repaints and Cancel answers, but nothing starts a second run.
  context.ui.tabContainer->setEnabled(false);
  if (auto* toolbar = context.ui.mainWindow->findChild<QToolBar*>(QStringLiteral("mainToolbar")))
    toolbar->setEnabled(false);
  context.ui.operationStatus->setRunning(true);
  cancel_ = QObject::connect(context.ui.operationStatus, &OperationStatus::cancelRequested,
                             [&runner = context.runner] { runner.cancel(); });
  if (progressWindow) {
    windowDelay_.setSingleShot(true);
    windowDelay_.setInterval(kWindowDelayMs);
    QObject::connect(&windowDelay_, &QTimer::timeout, progressWindow, [progressWindow] {
      if (!progressWindow->isVisible())
        WindowPlacement::centreAndShow(progressWindow);
    });
    windowDelay_.start();
  }
}

LongRun::~LongRun() {
  windowDelay_.stop();
  QObject::disconnect(cancel_);
  context_.ui.operationStatus->setRunning(false);
  QApplication::restoreOverrideCursor();
  context_.ui.tabContainer->setEnabled(true);
  if (auto* toolbar = context_.ui.mainWindow->findChild<QToolBar*>(QStringLiteral("mainToolbar")))
    toolbar->setEnabled(true);
  if (context_.ui.tabContainer->currentIndex() == 0 && context_.ui.mainWindow->isVisible()) {
    context_.ui.mainWindow->activateWindow();
    context_.ui.openedArchiveTableView->setFocus();
  }
}
