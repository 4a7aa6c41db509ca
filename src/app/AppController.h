#pragma once

#include "platform/ApplicationServices.h"

#include <QObject>
#include <QStringList>

#include <memory>

class AboutClass;
class PreferencesClass;
class UpdateClass;
class supportedFilesFirstTimeAssociation;
class Engine;
class FilesFromOutside;
class QCoreApplication;

// The application's delegate: brings the main window up, puts the stored
// preferences into the controls, installs the file managers' entries,
// offers the association once, and handles the files handed over on the
// command line, after which the application quits.
class AppController : public QObject {
  Q_OBJECT

 public:
  using Services = ApplicationServices;

  AppController(Engine& engine, Services services, QObject* parent = nullptr);
  ~AppController() override;

  AboutClass* about() const { return about_; }
  PreferencesClass* preferences() const { return preferences_; }
  supportedFilesFirstTimeAssociation* firstTimeAssociation() const { return firstTimeAssociation_; }
  // Its start-up check runs only where someone can see the window.
  UpdateClass* updates() const { return updates_; }

  void awakeFromNib();
  void applicationDidFinishLaunching();
  // The main window's close button quits the application.
  bool windowShouldClose();
  // Files handed over from outside, as full paths: extracted or packed at
  // once, after which the application quits.
  bool application(QCoreApplication* application, const QStringList& openFiles);
  void btnPasswordDlgOK();
  void btnPasswordDlgCancel();
  FilesFromOutside* filesFromOutside() const { return filesFromOutside_.get(); }

  void menuPreferences();
  void btnBackup();
  void btnDMGUtil();
  void btnWeb();
  void btnCheckForUpdates();
  void btnBlog();
  void btnFacebook();
  void btnTwitter();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void makeTextViewNonWrapping();
  void installFileManagerEntries();
  void showExtractionOptions();
  void showDefaultLevel();
  void openWebPage(const QString& address);

  Engine& engine_;
  Services services_;
  AboutClass* about_;
  PreferencesClass* preferences_;
  supportedFilesFirstTimeAssociation* firstTimeAssociation_;
  UpdateClass* updates_;
  std::unique_ptr<FilesFromOutside> filesFromOutside_;
};
