#include "engine/ToolLocations.h"
#include "engine/ToolProblem.h"
#include "platform/ProcessToolRunner.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

class ToolRunnerTest : public QObject {
  Q_OBJECT

 private slots:
  void passesInputAndCapturesBothStreams() {
    ProcessToolRunner runner;
    ToolRun run{"/bin/sh", {"-c", "cat; echo oops >&2; exit 3"}};
    run.input = "bytes in\n";
    const ToolResult result = runner.run(run);
    QVERIFY(result.started);
    QCOMPARE(result.output, QByteArray("bytes in\n"));
    QCOMPARE(result.lastErrorLine(), QString("oops"));
    QCOMPARE(result.exitCode, 3);
  }

  void standardInputEndsAtOnce() {
    ProcessToolRunner runner;
    const ToolResult result = runner.run({"/bin/sh", {"-c", "read line; echo \"got:$line\""}});
    QCOMPARE(result.output, QByteArray("got:\n"));
  }

  void toolsSpeakEnglishUtf8() {
    ProcessToolRunner runner;
    QCOMPARE(runner.run({"/bin/sh", {"-c", "printf %s \"$LC_ALL\""}}).output,
             QByteArray("C.UTF-8"));
  }

  void aRunInAFolderMovesQuilletThere() {
    QTemporaryDir first;
    QTemporaryDir second;
    ProcessToolRunner runner;
    ToolRun run{"/bin/pwd", {}};
    run.directory = first.path();
    QCOMPARE(runner.run(run).output.trimmed(), QDir(first.path()).canonicalPath().toUtf8());
    QCOMPARE(QDir::currentPath(), QDir(first.path()).canonicalPath());

    ToolRun alone{"/bin/pwd", {}};
    alone.childDirectory = second.path();
    QCOMPARE(runner.run(alone).output.trimmed(), QDir(second.path()).canonicalPath().toUtf8());
    QCOMPARE(QDir::currentPath(), QDir(first.path()).canonicalPath());
    QCOMPARE(runner.run({"/bin/pwd", {}}).output.trimmed(),
             QDir(first.path()).canonicalPath().toUtf8());
  }

  void namesWithAnyBytesPassUntouched() {
    ProcessToolRunner runner;
    const QStringList arguments = {
        "-c", "printf '%s|' \"$@\"", "sh", "-dash", "with space", "quote\"'", "ünï"};
    QCOMPARE(runner.run({"/bin/sh", arguments}).output,
             QByteArray("-dash|with space|quote\"'|ünï|"));
  }

  void theEventLoopTurnsWhileAToolRuns() {
    ProcessToolRunner runner;
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, [&] { ++ticks; });
    timer.start(20);
    runner.run({"/bin/sleep", {"0.3"}});
    QVERIFY(ticks >= 3);
  }

  void cancelEndsTheRunningChild() {
    ProcessToolRunner runner;
    QTimer::singleShot(100, [&] { runner.cancel(); });
    QElapsedTimer clock;
    clock.start();
    const ToolResult result = runner.run({"/bin/sleep", {"30"}});
    QVERIFY(clock.elapsed() < 10000);
    QVERIFY(result.crashed);
  }

  void outputThatIsNotUtf8GivesNoText() {
    ProcessToolRunner runner;
    const ToolResult result = runner.run({"/bin/sh", {"-c", "printf 'caf\\351\\n'"}});
    QCOMPARE(result.output, QByteArray("caf\xe9\n"));
    QVERIFY(result.text().isEmpty());
  }

  void missingProgramsAreNamed_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("script");
    QTest::addColumn<QString>("expected");
    QTest::newRow("cannot start")
        << "/nonexistent/arj" << QString()
        << "Quillet cannot start the program arj (/nonexistent/arj). Install arj.";
    QTest::newRow("adapter says 127") << "lha"
                                      << "echo 'lha: the program lhasa is missing' >&2; exit 127"
                                      << "lha: the program lhasa is missing";
  }
  void missingProgramsAreNamed() {
    QFETCH(QString, program);
    QFETCH(QString, script);
    QFETCH(QString, expected);
    QTemporaryDir tools;
    qputenv("QUILLET_TOOLS_DIR", tools.path().toUtf8());
    if (!script.isEmpty()) {
      program = ToolLocations::tool(program);
      QFile file(program);
      QVERIFY(file.open(QIODevice::WriteOnly));
      file.write("#!/bin/sh\n" + script.toUtf8() + "\n");
      file.close();
      file.setPermissions(file.permissions() | QFile::ExeOwner);
    }
    ProcessToolRunner runner;
    const ToolRun run{program, {"v", "x.lha"}};
    const auto problem = ToolProblem::of(run, runner.run(run));
    QVERIFY(problem);
    QCOMPARE(problem->kind, ToolProblem::Kind::MissingProgram);
    QCOMPARE(problem->message, expected);
  }

  void exit127OutsideTheToolsFolderIsAFailure() {
    ProcessToolRunner runner;
    const ToolRun run{"/bin/sh", {"-c", "exit 127"}};
    const auto problem = ToolProblem::of(run, runner.run(run));
    QVERIFY(problem);
    QCOMPARE(problem->kind, ToolProblem::Kind::Failed);
  }
};

QTEST_GUILESS_MAIN(ToolRunnerTest)
#include "tst_tool_runner.moc"
