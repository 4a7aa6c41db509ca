#include "engine/EngineContext.h"

#include "engine/EntriesModel.h"
#include "engine/EntriesProxy.h"
#include "engine/ListedNames.h"
#include "engine/LiteralNames.h"
#include "engine/MainWindowUi.h"
#include "engine/OperationStatus.h"
#include "engine/PasswordPanel.h"
#include "engine/ToolProblem.h"
#include "platform/Dialogs.h"

#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMainWindow>
#include <QTableView>

ToolResult EngineContext::runReported(const ToolRun& run) const {
  const ToolResult result = runner.run(run);
  if (const std::optional<ToolProblem> problem = ToolProblem::of(run, result))
    report(ui, dialogs, *problem,
           QString::fromLocal8Bit(result.errors.isEmpty() ? result.output : result.errors));
  return result;
}

void EngineContext::report(const MainWindowUi& ui, Dialogs& dialogs, const ToolProblem& problem,
                           const QString& details) {
  ui.operationStatus->showFailure(problem.message, details);
  if (problem.kind == ToolProblem::Kind::MissingProgram)
    dialogs.alert(QObject::tr("Missing program"), problem.message, QStringLiteral("OK"));
}

QString EngineContext::passwordFieldText() const {
  return passwordPanel->passwordTextField()->text();
}

bool EngineContext::refusesName(const QString& name) const {
  if (name.isEmpty())
    return false;
  const LiteralNames::Refusal refusal = LiteralNames::refusalOf(name);
  dialogs.alert(refusal.title, refusal.message, QStringLiteral("OK"));
  return true;
}

bool EngineContext::refusesListedNames(const QString& archive, const QString& passwordSwitch,
                                       const QStringList& chosen) const {
  QStringList allNames;
  for (const ArchiveEntry& entry : ui.oppenedArchiveArrayController->entries())
    allNames << entry.name;
  const QString name =
      ListedNames::firstAmbiguous(runner, archive, passwordSwitch, allNames, chosen);
  if (name.isEmpty())
    return false;
  dialogs.alert(ListedNames::title(), ListedNames::message(name), QStringLiteral("OK"));
  return true;
}

QModelIndexList EngineContext::selectedRows() const {
  QModelIndexList rows = ui.openedArchiveTableView->selectionModel()->selectedRows();
  std::sort(rows.begin(), rows.end(),
            [](const QModelIndex& a, const QModelIndex& b) { return a.row() < b.row(); });
  for (QModelIndex& row : rows)
    row = ui.entriesProxy->mapToSource(row);
  return rows;
}
