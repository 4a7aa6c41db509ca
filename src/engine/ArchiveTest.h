#pragma once

#include "engine/EngineContext.h"

#include <QObject>

// Testing the open archive: the tool's report, without its banner, in the
// text view, and the verdict in an alert.
class ArchiveTest : public QObject {
  Q_OBJECT

 public:
  ArchiveTest(const EngineContext& context, QObject* parent = nullptr);
  void btnTestAction();

 private:
  EngineContext context_;
};
