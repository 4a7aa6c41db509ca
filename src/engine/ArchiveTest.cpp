#include "engine/ArchiveTest.h"

#include "engine/ArchiveCommands.h"
#include "engine/ArchiveOpener.h"
#include "engine/ArchiveType.h"
#include "engine/MainWindowUi.h"
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
  const ToolResult result = context_.runReported(run);
  const QString banner = TestReport::installedBanner(context_.runner, run.program, isRar);
  QString report = TestReport::withoutBanners(
      result.text(),
      {banner, isRar ? TestReport::kUnrar390Banner : TestReport::kSevenZip904Banner});
  bool passed = TestReport::passed(report, isRar);
  // 7-Zip reads only the first volume of an arj archive; arj tests them all.
  if (archive.archivetype == ArchiveType::Arj &&
      QFileInfo::exists(ArchiveCommands::firstArjVolume(archive.filepath))) {
    const ToolResult volumes = context_.runReported(ArchiveCommands::testArjVolumes(target));
    report += u'\n' + volumes.text();
    passed = passed && volumes.succeeded();
  }
  context_.ui.fileContentView->setPlainText(report);
  if (passed) {
    context_.dialogs.alert(QStringLiteral("Archive test completed"),
                           QStringLiteral("No errors found."), QStringLiteral("OK"));
  } else {
    context_.dialogs.alert(QStringLiteral("Problem found"), QStringLiteral("Archive is damaged."),
                           QStringLiteral("OK"));
  }
}
