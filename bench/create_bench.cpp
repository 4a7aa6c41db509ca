// Measures what the compression job adds to the tool's own work: (a) many
// small files, one tool run per row, against the same runs of 7z made
// directly; (b) one large file as one row against the same 7z command.

#include "create/CompressionJob.h"
#include "create/JobUi.h"
#include "engine/ToolLocations.h"
#include "platform/ProcessToolRunner.h"

#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <cstdio>

namespace {

class SilentUi : public JobUi {
 public:
  void orderOutCreateWindow() override {}
  void setCompressionSpinning(bool) override {}
  void setCompressingArchiveName(const QString&) override {}
  void showCompressingWindow() override {}
  void hideCompressingWindow() override {}
  void setProgressRange(int, int) override {}
  void setProgressValue(int) override {}
  void setProgressIndeterminate() override {}
  void setStatus(const QString&) override {}
  void setFileContent(const QString&) override {}
  void selectRow(int) override {}
  void toggleCreateWindow() override {}
  void bringCreateWindowForwardIfHidden() override {}
  void alert(const QString&, const QString&) override {}
  QString chooseArchivesFolder() override { return {}; }
  void uploadFileToFTP(const QString&) override {}
  void reportFailure(const QString& message) override {
    std::fprintf(stderr, "failure: %s\n", qPrintable(message));
  }
};

double runDirect(const QString& folder, const QString& archive, const QStringList& items,
                 const QString& level) {
  QElapsedTimer clock;
  clock.start();
  for (const QString& item : items) {
    QProcess tool;
    tool.setWorkingDirectory(folder);
    tool.setStandardOutputFile(QProcess::nullDevice());
    tool.start(QStringLiteral("7z"), {"a", "-tzip", archive, item, level, "-ssc"});
    tool.waitForFinished(-1);
  }
  return clock.nsecsElapsed() / 1e9;
}

double runJob(const QString& folder, const QString& name, const QStringList& items, int level) {
  CompressionRequest request;
  request.settings.init();
  request.settings.useLevel(*JobSettings::levelAt(level));
  request.itemToCompress = folder + u'/' + name;
  request.items = items;
  request.startFolder = folder;
  ProcessToolRunner runner;
  SilentUi ui;
  CompressionJob job(request, runner, ui, [] { return false; });
  QElapsedTimer clock;
  clock.start();
  job.run();
  return clock.nsecsElapsed() / 1e9;
}

QStringList smallFiles(const QString& folder, int count) {
  QStringList files;
  for (int i = 0; i < count; ++i) {
    QFile file(QStringLiteral("%1/small/f%2.txt").arg(folder).arg(i));
    QDir().mkpath(QFileInfo(file).absolutePath());
    file.open(QIODevice::WriteOnly);
    file.write(QByteArray::number(i).repeated(20));
    files << file.fileName();
  }
  return files;
}

QString largeFile(const QString& folder, qint64 megabytes) {
  QFile file(folder + QStringLiteral("/large.bin"));
  file.open(QIODevice::WriteOnly);
  QByteArray block(1 << 20, Qt::Uninitialized);
  QRandomGenerator random(42);
  for (qint64 i = 0; i < megabytes; ++i) {
    random.fillRange(reinterpret_cast<quint32*>(block.data()), block.size() / 4);
    // Half random, half text, so that deflate has work to do.
    block.replace(0, block.size() / 2, QByteArray(block.size() / 2, 'a' + i % 26));
    file.write(block);
  }
  return file.fileName();
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  const int rows = argc > 1 ? QString(argv[1]).toInt() : 1000;
  const qint64 megabytes = argc > 2 ? QString(argv[2]).toLongLong() : 200;
  QTemporaryDir folder;
  constexpr int kLowLevel = 2;

  std::printf("== %d small files, one row each\n", rows);
  const QStringList files = smallFiles(folder.path(), rows);
  const double direct = runDirect(folder.path(), "direct.zip", files, "-mx3");
  const double quillet = runJob(folder.path(), "quillet", files, kLowLevel);
  std::printf("  7z directly                %8.3f s\n", direct);
  std::printf("  quillet's job              %8.3f s\n", quillet);
  std::printf("  overhead per row           %8.2f ms\n", (quillet - direct) * 1000 / rows);

  std::printf("== one file of %lld MB as one row\n", megabytes);
  const QString large = largeFile(folder.path(), megabytes);
  const double directLarge = runDirect(folder.path(), "direct-large.zip", {large}, "-mx3");
  const double quilletLarge = runJob(folder.path(), "quillet-large", {large}, kLowLevel);
  std::printf("  7z directly                %8.3f s\n", directLarge);
  std::printf("  quillet's job              %8.3f s\n", quilletLarge);
  std::printf("  ratio                      %8.3f\n", quilletLarge / directLarge);
  return 0;
}
