#pragma once

#include "engine/EngineContext.h"
#include "tools/ConversionCommands.h"

#include <QObject>

class ConverterWindow;
class QAbstractButton;

// Converts the archive open in the main window into another format: the
// whole archive is extracted into Quillet's temporary folder and packed
// again beside the old one in the format of the shared compression method.
class converter : public QObject {
  Q_OBJECT

 public:
  converter(const EngineContext& context, QObject* parent = nullptr);

  ConverterWindow* mainWindow() const { return window_; }

  // Shows the window centred on the main window, with the target of the
  // shared compression method.
  void centreAndShow();

  void dropZip();
  void drop7z();
  void dropRAR();
  void btnConvert();
  void btnClose();

  // Each extracts the whole archive into the folder with one tool; false,
  // after saying why, when the tool failed or was cancelled.
  bool extractWith7z(const QString& folder);
  bool extractWithRar(const QString& folder);
  bool extractWithLHA(const QString& folder);
  bool extractWithARJ(const QString& folder);

 private:
  void chooseTarget(const QString& method);
  // Runs one step; false, after saying why, when it failed or was
  // cancelled.
  bool runStep(const ConversionCommands::Step& step);
  bool extractWith(const QString& type, const QString& folder);
  bool extract(const QString& type, const QString& folder);
  void pack(const ConversionCommands::Step& packing);
  void finish(const QString& folder);
  void showStatus(const QString& text);

  EngineContext context_;
  ConverterWindow* window_;
  bool cancelled_ = false;
};
