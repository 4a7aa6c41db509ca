#pragma once

#include "engine/EngineContext.h"

#include <QMetaObject>
#include <QTimer>

class QWidget;

// For as long as a tool works on the open archive: a busy cursor, an
// endless progress bar with Cancel in the status bar, and a progress
// window that appears only if the work lasts long enough to need one, so
// quick runs do not flash it. Afterwards the keys go to the table again.
class LongRun {
 public:
  explicit LongRun(const EngineContext& context, QWidget* progressWindow = nullptr);
  ~LongRun();
  LongRun(const LongRun&) = delete;
  LongRun& operator=(const LongRun&) = delete;

  static constexpr int kWindowDelayMs = 300;

 private:
  const EngineContext& context_;
  QTimer windowDelay_;
  QMetaObject::Connection cancel_;
};
