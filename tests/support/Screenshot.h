#pragma once

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QString>
#include <QWidget>

// Saves a picture of the widget as NAME.png in $QUILLET_SCREENSHOT_DIR, when
// that is set, so that the windows can be looked at after a run.
inline void saveScreenshot(QWidget* widget, const QString& name) {
  const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
  if (folder.isEmpty())
    return;
  QDir().mkpath(folder);
  // Fakes do not wait for tools, so nothing else would lay the window out.
  QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
  widget->grab().save(folder + u'/' + name + QStringLiteral(".png"));
}
