#pragma once

#include "create/CreateOptions.h"

#include <QDialog>

class JobSettings;
class QButtonGroup;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSlider;

// The options of a new archive: format, level, password, volumes,
// self-extraction, note and upload. Its controls write JobSettings and
// follow the rules of CreateOptions.
class CreateArchiveWindow : public QDialog {
  Q_OBJECT

 public:
  CreateArchiveWindow(JobSettings& settings, QWidget* parent);

  const CreateOptions& options();
  QLineEdit* selectionForCompression() const { return selectionForCompression_; }
  // Start-up shows the default level on these without choosing it.
  QSlider* compressionLevelSliderControl() const { return compressionLevelSliderControl_; }
  QLabel* compressionLevelInfo() const { return compressionLevelInfo_; }
  // The actions that store the default level, Lowest to Higher; the
  // preferences offer the same.
  const QList<QAction*>& defaultLevelActions() const { return defaultLevelActions_; }
  QString notes() const;
  QCheckBox* chkUploadToFTPAfterCompression() const { return chkUploadToFTPAfterCompression_; }
  QCheckBox* chkSendMailAfterUploadIsCompletedOutlet() const {
    return chkSendMailAfterUploadIsCompletedOutlet_;
  }
  // The buttons that open the FTP and the e-mail settings.
  QPushButton* btnFTPSettings() const { return btnFTPSettings_; }
  QPushButton* btnOpenEmailSettings() const { return btnOpenEmailSettings_; }
  void centreAndShow();
  // Every-item mode disables volumes and self-extraction without
  // unchecking them.
  void disableSplitAndSfx();

  void btnZipCompression() { chooseFormat(CreateOptions::Format::Zip); }
  void btn7zCompression() { chooseFormat(CreateOptions::Format::SevenZip); }
  void btnTarCompression() { chooseFormat(CreateOptions::Format::Tar); }
  void btnGzipCompression() { chooseFormat(CreateOptions::Format::Gzip); }
  void btnBzip2Compression() { chooseFormat(CreateOptions::Format::Bzip2); }
  void btnRarCompression() { chooseFormat(CreateOptions::Format::Rar); }
  void btnArjCompression() { chooseFormat(CreateOptions::Format::Arj); }
  void btnLHACompression() { chooseFormat(CreateOptions::Format::Lha); }
  void compressionLevelSlider();
  void chkboxPasswordProtected();
  void chkBoxSplitToVolumes();
  void chkCreateSFXArchive();
  void chkBoxEveryItemNewArchive(bool on);
  void btnSplitToVolumesKB();
  void btnSplitToVolumesMB();
  void btnSplitToVolumesGB();
  void btnCreateArchiveCancel();
  // The e-mail notice is offered only with the upload.
  void chkUploadFtpAfterCompressionAction();

 signals:
  void compressRequested();

 private:
  QWidget* buildFormats();
  QWidget* buildLevel();
  QWidget* buildProtection();
  QWidget* buildSfxDrawer();
  QWidget* buildNotesPanel();
  QLayout* buildAfterCompression();
  void chooseFormat(CreateOptions::Format format);
  void takeControls();
  void showControls();

  JobSettings& settings_;
  CreateOptions options_;
  QButtonGroup* formats_;
  QLineEdit* selectionForCompression_;
  QSlider* compressionLevelSliderControl_;
  QLabel* compressionLevelInfo_;
  QList<QAction*> defaultLevelActions_;
  QCheckBox* chkPasswordProtected_;
  QLineEdit* textFieldPassword_;
  QLineEdit* textFieldPasswordConfirm_;
  QCheckBox* chkSplitToVolumes_;
  QLineEdit* textfieldSplitToVolumesSize_;
  QComboBox* btnSplitToVolumesSizeType_;
  QCheckBox* sfxChkBox_;
  QLabel* everyItemNewArchiveLabel_;
  QCheckBox* chkUploadToFTPAfterCompression_;
  QCheckBox* chkSendMailAfterUploadIsCompletedOutlet_;
  QPushButton* btnFTPSettings_;
  QPushButton* btnOpenEmailSettings_;
  QWidget* sfxObjectDrawer_;
  QWidget* noteDrawer_;
  QPlainTextEdit* sfxNotesField_;
};
