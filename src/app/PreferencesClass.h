#pragma once

#include <QList>
#include <QObject>

class Dialogs;
class QAction;
class QCheckBox;
class QComboBox;
class QDialog;
class QLabel;
class QLineEdit;
class QPushButton;
class QString;
class QTabWidget;
class QWidget;
class ToolRunner;

// The preferences window: six tabs of settings, each control writing its
// key to the store as soon as it is used. The store is put into the
// controls once, at start-up; afterwards the controls only write.
class PreferencesClass : public QObject {
  Q_OBJECT

 public:
  // The default-level pop-up offers the create window's default-level
  // actions (Lowest to Higher) and triggers the one chosen, so the rule of
  // what each stores lives in one place.
  PreferencesClass(QWidget* parent, Dialogs& dialogs, ToolRunner& runner,
                   const QList<QAction*>& defaultLevelChoices);

  QDialog* windowPreferences() const { return windowPreferences_; }
  QTabWidget* tabContainer() const { return tabContainer_; }
  // Compressing files handed over from outside leaves .DS_Store files out
  // by this box.
  QCheckBox* chkExcludeDS_Store() const { return chkExcludeDS_Store_; }
  // The update window has the same switch; the two are kept in step.
  QCheckBox* chkAutoUpdateChkBox() const { return chkAutoUpdateChkBox_; }
  // The Internet tab's buttons to the FTP and e-mail settings windows.
  QPushButton* btnPreferencesFTPSettings() const { return btnPreferencesFTPSettings_; }
  QPushButton* btnOpenEmailSettings() const { return btnOpenEmailSettings_; }

  // Start-up: the stored values into the controls, the on-drop keys
  // repaired on the way.
  void showStoredPreferences();
  // Selects the stored on-drop method and level; a missing or unknown
  // one is stored as "ZIP" or "2" and its pop-up is left as it is.
  void loadOnDropPreferences();

  void toolBarBtnGeneral();
  void toolBarBtnBackup();
  void toolBarBtnInternet();
  void toolBarBtnMisc();
  void toolBarBtnContextMenu();
  void toolBarBtnDrop();

  void chkCreateSurroundingFolderBeforeExtractionAction();
  void chkBoxRemoveMACOSXFolder();
  void chkBoxExclude_DS_Store();
  void chkBoxEnableCustomContextMenu();
  void chkPrefUseFirstNameOfTheArrayAsArchiveName();
  void chkAutoCheckForUpdates();
  void chkBoxListCompressedTarArchives();

  void dropATZip();
  void dropAT7z();
  void dropATRAR();
  void dropATARJ();
  void dropATLHA();
  void dropCL0();
  void dropCL1();
  void dropCL2();
  void dropCL3();
  void dropCL4();

  void btnChooseBackupFolder();
  void btnAssociateSupportedFileTypes();
  // Only when the window is up: hides it and makes the association
  // button usable again.
  void btnClosePreferencesWindow();

 private:
  QWidget* buildGeneral(const QList<QAction*>& defaultLevelChoices);
  QWidget* buildBackup();
  QWidget* buildInternet();
  QWidget* buildMisc();
  QWidget* buildContextMenu();
  QWidget* buildDrop();
  QCheckBox* checkbox(const char* objectName, const QString& text,
                      void (PreferencesClass::*action)());
  void selectTab(int index);
  void storeDropMethod(int index);
  void storeDropLevel(int index);

  Dialogs& dialogs_;
  ToolRunner& runner_;
  QDialog* windowPreferences_;
  QTabWidget* tabContainer_;
  QCheckBox* chkCreateSurroundingFolderBeforeExtraction_ = nullptr;
  QCheckBox* chkRemoveMACOSXFolder_ = nullptr;
  QCheckBox* chkListCompressedTarArchives_ = nullptr;
  QCheckBox* chkExcludeDS_Store_ = nullptr;
  QCheckBox* chkEnableCustomContextMenu_ = nullptr;
  QCheckBox* chkUseTheFirstFileFromTheArrayForArchiveName_ = nullptr;
  QCheckBox* chkAutoUpdateChkBox_ = nullptr;
  QPushButton* btnPreferencesFTPSettings_ = nullptr;
  QPushButton* btnOpenEmailSettings_ = nullptr;
  QComboBox* prefsDefaultCompressionLevel_ = nullptr;
  QComboBox* onDropCompressionMethodDropDown_ = nullptr;
  QComboBox* onDropComplressionLevelDropDown_ = nullptr;
  QLineEdit* backupFolderEditBox_ = nullptr;
  QPushButton* btnAssociateNow_ = nullptr;
  QLabel* associationProblem_ = nullptr;
};
