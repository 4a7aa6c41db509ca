#pragma once

#include "engine/OneShotExtraction.h"
#include "platform/ApplicationServices.h"

#include <QObject>
#include <QString>

#include <memory>

class archivePreviewMiniClass;
class contextMenuWindowClass;
class QuickExtractionWindow;
class QuickPasswordDialog;

// The quick-extract panel: it pops up under the pointer for an archive
// handed over from outside, extracts it in place through a small extraction
// window (asking for a password when it needs one), and every way out of it
// ends the application.
class contextMenuClass : public QObject {
  Q_OBJECT

 public:
  using Services = ApplicationServices;

  explicit contextMenuClass(Services services, QObject* parent = nullptr);
  ~contextMenuClass() override;

  contextMenuWindowClass* contextWindow() const { return contextWindow_.get(); }
  QuickExtractionWindow* extractWindow() const { return extractWindow_.get(); }
  QuickPasswordDialog* enterPasswordDlg() const { return enterPasswordDlg_.get(); }
  archivePreviewMiniClass* miniArchiveBrowser() const { return miniArchiveBrowser_.get(); }

  // The full path of the archive to act on, written by the launch logic.
  const QString& hiddenFileName() const { return hiddenFileName_; }
  void setHiddenFileName(const QString& path);

  // Places the panel around the pointer, still invisible.
  void awakeFromNib();
  // The launch logic's presentation: front, on top, with the keyboard,
  // fading in.
  void fadeInPanel();

  void btnDecompress();
  void btnPasswordDlgOK();
  void btnPasswordDlgCancel();
  void btnCancel();

 private:
  Services services_;
  std::unique_ptr<contextMenuWindowClass> contextWindow_;
  std::unique_ptr<QuickExtractionWindow> extractWindow_;
  std::unique_ptr<QuickPasswordDialog> enterPasswordDlg_;
  OneShotExtraction extraction_;
  QString hiddenFileName_;
  // Reads hiddenFileName_, which outlives it.
  std::unique_ptr<archivePreviewMiniClass> miniArchiveBrowser_;
};
