#pragma once

#include "engine/OneShotExtraction.h"
#include "platform/ApplicationServices.h"

#include <QObject>
#include <QStringList>

#include <memory>

class contextMenuClass;
class QCheckBox;
class QMainWindow;
class QuickExtractionWindow;
class QuickPasswordDialog;

// The files a file manager hands over on the command line: a list that
// starts with an archive is extracted file by file beside itself (or goes
// to the quick-extract panel), any other list is packed into one archive,
// and then the application quits. Nothing of it is shown in the main
// window.
class FilesFromOutside : public QObject {
  Q_OBJECT

 public:
  enum class Route { QuickPanel, Compress, Extract };

  using Services = ApplicationServices;

  // excludeDsStore is the preferences' check box, read when packing.
  FilesFromOutside(Services services, QMainWindow& mainWindow, const QCheckBox& excludeDsStore,
                   QObject* parent = nullptr);
  ~FilesFromOutside() override;

  // The first file decides for the whole list.
  static Route routeOf(const QString& firstExtension, bool customContextMenu);

  void openFiles(const QStringList& files);
  void btnPasswordDlgOK();
  void btnPasswordDlgCancel();

  QuickExtractionWindow* extractWindow() const { return extractWindow_.get(); }
  QuickPasswordDialog* enterPasswordDlg() const { return enterPasswordDlg_.get(); }
  contextMenuClass* contextMenu() const { return contextMenu_.get(); }

 private:
  void showQuickPanel(const QString& archive);
  void compress(const QStringList& files);
  void extract(const QString& archive);
  void endUnanswered(const QString& why);

  Services services_;
  QMainWindow& mainWindow_;
  const QCheckBox& excludeDsStore_;
  std::unique_ptr<QuickExtractionWindow> extractWindow_;
  std::unique_ptr<QuickPasswordDialog> enterPasswordDlg_;
  std::unique_ptr<contextMenuClass> contextMenu_;
  OneShotExtraction extraction_;
  int currentObject_ = 0;
  int lastObject_ = 0;
  bool filesDroppedOnce_ = false;
};
