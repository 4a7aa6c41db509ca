#include "engine/ArchiveTest.h"

#include "engine/ArchiveCommands.h"
#include "engine/ArchiveOpener.h"
#include "engine/ArchiveType.h"
#include "engine/LongRun.h"
#include "engine/MainWindowUi.h"
#include "engine/OperationStatus.h"
#include "engine/TestReport.h"
#include "platform/Dialogs.h"

#include <QAction>
#include <QFileInfo>
#include <QPlainTextEdit>

ArchiveTest::ArchiveTest(const EngineContext& context, QObject* parent)
    : QObject(parent), context_(context) {
  connect(context.ui.btnTestAction, &QAction::triggered, this, &ArchiveTest::btnTestAction);
}

void ArchiveTest::btnTestAction() {
  OpenedArchive& archive = context_.opener.archive();
  if (!archive.isOpen())
    return;
  // Braces around the password are part of the test's switch.
  archive.archivePass = QStringLiteral("-p{") + context_.passwordFieldText() + u'}';
  const bool isRar = archive.archivetype == ArchiveType::Rar;
  const ArchiveCommands::Archive target{archive.archivetype, archive.filepath};
  const ToolRun run = ArchiveCommands::test(target, archive.archivePass);
  if (context_.refusesName(ArchiveCommands::unsafeName(target, run.program, {})))
    return;
  context_.ui.operationStatus->clear();
  std::optional<LongRun> running(std::in_place, context_);
  ToolRun cancellable = run;
  cancellable.acceptsUserInput = true;
  const ToolResult result = context_.runReported(cancellable);
  QString report;
  bool passed = false;
  if (ArchiveType::isCompressedTar(archive.archivetype)) {
    // tar prints the names it read; any word on its error output is a fault.
    report = result.text() + QString::fromUtf8(result.errors);
    passed = result.succeeded() && result.errors.trimmed().isEmpty();
  } else {
    const QString banner = TestReport::installedBanner(context_.runner, run.program, isRar);
    report = TestReport::withoutBanners(
        result.text(),
        {banner, isRar ? TestReport::kUnrar390Banner : TestReport::kSevenZip904Banner});
    passed = TestReport::passed(report, isRar);
  }
  // 7-Zip reads only the first volume of an arj archive; arj tests them all.
  if (archive.archivetype == ArchiveType::Arj &&
      QFileInfo::exists(ArchiveCommands::firstArjVolume(archive.filepath))) {
    const ToolResult volumes = context_.runReported(ArchiveCommands::testArjVolumes(target));
    report += u'\n' + volumes.text();
    passed = passed && volumes.succeeded();
  }
  running.reset();
  context_.ui.fileContentView->setPlainText(report);
  if (passed)
    context_.ui.operationStatus->showDone(tr("%1: no errors found").arg(archive.filename));
  else if (!context_.ui.operationStatus->failed())
    context_.ui.operationStatus->showFailure(tr("%1 is damaged").arg(archive.filename), report);
  if (passed) {
    context_.dialogs.notify(QStringLiteral("Archive test completed"),
                            QStringLiteral("No errors found."), QStringLiteral("OK"));
  } else {
    context_.dialogs.alert(QStringLiteral("Problem found"), QStringLiteral("Archive is damaged."),
                           QStringLiteral("OK"));
  }
}
