#pragma once

#include <QMetaObject>
#include <QObject>
#include <QThread>

#include <utility>

// Runs function in the thread of owner (the GUI thread for the windows'
// controllers): at once when already there, else queued; wait makes the
// caller wait for it, for the calls that need an answer.
template <typename Function>
void runInThreadOf(QObject* owner, Function function, bool wait) {
  if (QThread::currentThread() == owner->thread()) {
    function();
    return;
  }
  QMetaObject::invokeMethod(owner, std::move(function),
                            wait ? Qt::BlockingQueuedConnection : Qt::QueuedConnection);
}
