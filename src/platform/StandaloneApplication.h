#pragma once

#include <QApplication>
#include <QCoreApplication>

#include <memory>

// The programs Quillet bundles with what it makes run with windows where
// there is a display and in the terminal where there is none.
namespace StandaloneApplication {

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

}  // namespace StandaloneApplication
