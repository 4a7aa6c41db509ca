#pragma once

#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "app/Engine.h"
#include "engine/EntriesModel.h"
#include "engine/PasswordPanel.h"

#include <QLineEdit>
#include <QTableView>

// A main window on the given runner (the real tools or a fake), with
// scripted panels and a recording desktop.
template <typename Runner>
struct EngineFixture {
  Runner runner;
  FakeDialogs dialogs;
  FakeDesktop desktop;
  Engine engine{runner, runner, dialogs, desktop};

  void open(const QString& archive, const QString& password = QString()) {
    engine.openDialog({archive}, 1);
    if (!password.isNull()) {
      engine.enterPasswordDlg()->passwordTextField()->setText(password);
      engine.btnPasswordProtectedDlgOK();
    }
  }

  void selectRowsNamed(const QStringList& names) {
    QTableView* table = engine.ui().openedArchiveTableView;
    table->clearSelection();
    const ArchiveEntries& entries = engine.ui().oppenedArchiveArrayController->entries();
    for (const QString& name : names) {
      for (int row = 0; row < entries.size(); ++row) {
        if (entries[row].name == name)
          table->selectionModel()->select(table->model()->index(row, 0),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
      }
    }
  }
};
