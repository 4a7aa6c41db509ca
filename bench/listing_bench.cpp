// Measures opening and listing large archives: the tool work alone (the
// password probe and the listing, two "7z l -slt" runs), "quillet --list"
// as a whole process, and the main window from the open request to the last
// row, each with its peak memory.

#include "app/Engine.h"
#include "engine/EntriesModel.h"
#include "platform/ProcessToolRunner.h"
#include "platform/QtDesktop.h"
#include "platform/QtDialogs.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QMainWindow>
#include <QProcess>
#include <QTemporaryDir>

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include <cstdio>
#include <vector>

extern char** environ;

namespace {

struct Measured {
  double seconds = 0;
  double peakMegabytes = 0;
};

constexpr int kRepeats = 3;

// Runs a program to its end with its output thrown away.
Measured measureOnce(const QStringList& command) {
  std::vector<QByteArray> storage;
  std::vector<char*> argv;
  for (const QString& part : command)
    storage.push_back(part.toLocal8Bit());
  for (QByteArray& part : storage)
    argv.push_back(part.data());
  argv.push_back(nullptr);

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_addopen(&actions, 1, "/dev/null", O_WRONLY, 0);
  posix_spawn_file_actions_addopen(&actions, 0, "/dev/null", O_RDONLY, 0);
  QElapsedTimer clock;
  clock.start();
  pid_t child = 0;
  if (posix_spawnp(&child, argv[0], &actions, nullptr, argv.data(), environ) != 0)
    qFatal("cannot start %s", argv[0]);
  int status = 0;
  rusage usage{};
  wait4(child, &status, 0, &usage);
  posix_spawn_file_actions_destroy(&actions);
  return {clock.nsecsElapsed() / 1e9, usage.ru_maxrss / 1024.0};
}

// The best of a few runs: this machine's other work only ever adds time.
Measured measureProcess(const QStringList& command) {
  Measured best{1e9, 0};
  for (int i = 0; i < kRepeats; ++i) {
    const Measured run = measureOnce(command);
    best.seconds = std::min(best.seconds, run.seconds);
    best.peakMegabytes = std::max(best.peakMegabytes, run.peakMegabytes);
  }
  return best;
}

void makeArchives(const QString& folder, int count) {
  QDir().mkpath(folder + "/files");
  for (int i = 0; i < count; ++i) {
    QFile file(QString("%1/files/d%2/file-%3.txt").arg(folder).arg(i / 1000).arg(i));
    QDir().mkpath(QFileInfo(file).absolutePath());
    file.open(QIODevice::WriteOnly);
    file.write(QByteArray::number(i).repeated(1 + i % 7));
  }
  for (const char* archive : {"t.zip", "t.7z"}) {
    QProcess maker;
    maker.setWorkingDirectory(folder);
    maker.start("7z", {"a", "-bd", "-mx=1", archive, "files"});
    maker.waitForFinished(-1);
  }
}

int openInWindow(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  ProcessToolRunner runner;
  QtDialogs dialogs;
  QtDesktop desktop;
  ProcessToolRunner jobRunner;
  Engine engine(runner, jobRunner, dialogs, desktop);
  engine.ui().mainWindow->show();
  QElapsedTimer clock;
  clock.start();
  engine.openDialog({QString::fromLocal8Bit(argv[2])}, 1);
  const double seconds = clock.nsecsElapsed() / 1e9;
  std::printf("%.3f %d\n", seconds, engine.ui().oppenedArchiveArrayController->rowCount());
  return 0;
}

void report(const char* label, const Measured& measured) {
  std::printf("  %-34s %8.3f s  %8.1f MB peak\n", label, measured.seconds, measured.peakMegabytes);
}

void benchArchive(const QString& self, const QString& quillet, const QString& archive) {
  std::printf("%s\n", qPrintable(archive));
  const Measured probe = measureProcess({"7z", "l", "-slt", archive});
  const Measured listing = measureProcess({"7z", "l", "-p{}", archive, "-slt"});
  const Measured tools{probe.seconds + listing.seconds,
                       std::max(probe.peakMegabytes, listing.peakMegabytes)};
  report("tools alone (probe + listing)", tools);
  const Measured headless = measureProcess({quillet, "--list", archive});
  report("quillet --list", headless);

  double windowSeconds = 1e9;
  QByteArray rows;
  for (int i = 0; i < kRepeats; ++i) {
    QProcess window;
    window.start(self, {"window", archive});
    window.waitForFinished(-1);
    const QList<QByteArray> answer = window.readAllStandardOutput().trimmed().split(' ');
    windowSeconds = std::min(windowSeconds, answer.value(0).toDouble());
    rows = answer.value(1);
  }
  const Measured windowRun = measureOnce({self, "window", archive});
  std::printf("  %-34s %8.3f s  %8.1f MB peak  (%s rows)\n", "main window, open to last row",
              windowSeconds, windowRun.peakMegabytes, rows.constData());
  std::printf("  ratio quillet --list / tools:      %8.2f\n", headless.seconds / tools.seconds);
  std::printf("  ratio main window / tools:         %8.2f\n", windowSeconds / tools.seconds);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc == 3 && qstrcmp(argv[1], "window") == 0)
    return openInWindow(argc, argv);

  QCoreApplication application(argc, argv);
  const QString self = QCoreApplication::applicationFilePath();
  const QString quillet = QCoreApplication::applicationDirPath() + "/../quillet";
  QStringList counts = application.arguments().mid(1);
  if (counts.isEmpty())
    counts = {"10000", "100000"};
  for (const QString& count : counts) {
    QTemporaryDir folder;
    std::printf("== %s entries (making archives...)\n", qPrintable(count));
    std::fflush(stdout);
    makeArchives(folder.path(), count.toInt());
    for (const char* archive : {"t.zip", "t.7z"})
      benchArchive(self, quillet, folder.filePath(archive));
    std::fflush(stdout);
  }
  return 0;
}
