#pragma once

#include "platform/ToolRunner.h"

#include <QDir>
#include <QList>

#include <functional>

// Records every run and answers with canned results: the first answer
// whose tool name and predicate match, else an empty, successful run.
class FakeToolRunner : public ToolRunner {
 public:
  struct Recorded {
    QString program;
    QStringList arguments;
    QString directoryAtLaunch;
    QByteArray input;

    QString tool() const { return program.section(u'/', -1); }
  };
  using Matcher = std::function<bool(const QStringList& arguments)>;

  void answer(const QString& tool, Matcher matches, ToolResult result) {
    answers_.append({tool, std::move(matches), std::move(result)});
  }
  void answer(const QString& tool, const QString& command, const QByteArray& output) {
    ToolResult result;
    result.output = output;
    answer(
        tool, [command](const QStringList& arguments) { return arguments.value(0) == command; },
        result);
  }

  ToolResult run(const ToolRun& run) override {
    if (!run.directory.isEmpty())
      QDir::setCurrent(run.directory);
    const QString launchDirectory =
        run.childDirectory.isEmpty() ? QDir::currentPath() : run.childDirectory;
    runs.append({run.program, run.arguments, launchDirectory, run.input});
    const QString tool = runs.last().tool();
    for (const Answer& candidate : answers_) {
      if (candidate.tool == tool && candidate.matches(run.arguments))
        return deliver(run, candidate.result);
    }
    return {};
  }
  void cancel() override { ++cancels; }

  QList<Recorded> runs;
  int cancels = 0;

 private:
  // Output for a sink arrives in small pieces, as from a real pipe.
  static ToolResult deliver(const ToolRun& run, ToolResult result) {
    if (!run.outputSink)
      return result;
    constexpr qsizetype kPiece = 7;
    for (qsizetype at = 0; at < result.output.size(); at += kPiece)
      run.outputSink(
          QByteArrayView(result.output).sliced(at, std::min(kPiece, result.output.size() - at)));
    result.output.clear();
    return result;
  }

  struct Answer {
    QString tool;
    Matcher matches;
    ToolResult result;
  };
  QList<Answer> answers_;
};
