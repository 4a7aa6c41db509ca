#pragma once

#include <QApplication>
#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QProgressDialog>
#include <QStringDecoder>

#include <functional>
#include <memory>
#include <optional>

// What the programs Quillet bundles with what it makes (the self-extracting
// stub, the restore program) share: they run with windows where there is a
// display and in the terminal where there is none, and each sits at
// <bundle>/Contents/MacOS beside the texts Quillet left in Contents/Resources.
namespace BundledProgram {

inline bool displayAvailable() {
  const QString platform = qEnvironmentVariable("QT_QPA_PLATFORM");
  if (platform.startsWith(u"offscreen") || platform.startsWith(u"minimal"))
    return false;
  return !platform.isEmpty() || qEnvironmentVariableIsSet("DISPLAY") ||
         qEnvironmentVariableIsSet("WAYLAND_DISPLAY");
}

// A QApplication with a display, else a QCoreApplication.
inline std::unique_ptr<QCoreApplication> make(int& argc, char** argv, bool withWindows) {
  if (withWindows)
    return std::make_unique<QApplication>(argc, argv);
  return std::make_unique<QCoreApplication>(argc, argv);
}

// The bundle's folder, when this program sits where it should.
inline std::optional<QString> bundleRoot() {
  QDir folder(QCoreApplication::applicationDirPath());
  if (folder.dirName() != u"MacOS" || !folder.cdUp() || folder.dirName() != u"Contents" ||
      !folder.cdUp())
    return std::nullopt;
  return folder.absolutePath();
}

// Quillet writes these texts as UTF-16 with a byte order mark; an unmarked
// file is taken as UTF-16 in this machine's byte order. Nothing when the
// file cannot be read.
inline std::optional<QString> readText(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return std::nullopt;
  const QByteArray data = file.readAll();
  QStringDecoder decoder(QStringConverter::encodingForData(data).value_or(QStringConverter::Utf16));
  return QString(decoder.decode(data));
}

// Returns once a started 7-Zip has ended; with windows they stay responsive
// meanwhile, in the terminal the program simply blocks.
using WaitForTool = std::function<void(QProcess&)>;

// Starts 7-Zip as both programs need it: names turned into bytes by UTF-8
// whatever the locale, and a closed input, so that a password prompt fails
// at once instead of hanging. False when it could not be started.
inline bool startSevenZip(QProcess& tool, const QString& program, const QStringList& arguments) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
  tool.setProcessEnvironment(environment);
  tool.setStandardInputFile(QProcess::nullDevice());
  tool.start(program, arguments);
  return tool.waitForStarted();
}

// Waits for the tool with a busy window saying what is going on, shown only
// when the wait is not short.
inline void waitShowingProgress(QProcess& tool, const QString& title, const QString& doing) {
  QProgressDialog progress(doing, QString(), 0, 0);
  progress.setWindowTitle(title);
  progress.setMinimumDuration(400);
  QEventLoop loop;
  QObject::connect(&tool, &QProcess::finished, &loop, &QEventLoop::quit);
  if (tool.state() != QProcess::NotRunning)
    loop.exec();
}

}  // namespace BundledProgram
