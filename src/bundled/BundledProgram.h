#pragma once

#include <QApplication>
#include <QByteArray>
#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QStringDecoder>

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

}  // namespace BundledProgram
