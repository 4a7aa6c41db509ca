#include "engine/EngineContext.h"

#include "app/Dialogs.h"
#include "engine/LiteralNames.h"
#include "engine/MainWindowUi.h"
#include "engine/PasswordPanel.h"
#include "engine/ToolProblem.h"

#include <QLineEdit>
#include <QMainWindow>
#include <QStatusBar>

ToolResult EngineContext::runReported(const ToolRun& run) const {
  const ToolResult result = runner.run(run);
  if (const std::optional<ToolProblem> problem = ToolProblem::of(run, result)) {
    ui.mainWindow->statusBar()->showMessage(problem->message);
    if (problem->kind == ToolProblem::Kind::MissingProgram)
      dialogs.alert(QObject::tr("Missing program"), problem->message, QStringLiteral("OK"));
  }
  return result;
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
