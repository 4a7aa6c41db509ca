#pragma once

#include "platform/ProcessToolRunner.h"

#include <QObject>
#include <QPointer>
#include <QTimer>

class Dialogs;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;
class QWidget;

// The disk-image tab's controller: makes an image file of a folder,
// optionally of a fixed size and encrypted, and follows the growing image
// against the folder's size.
class DMGUtility : public QObject {
  Q_OBJECT

 public:
  // page receives the tab's widgets; statusWindow, when a main window, gets
  // a line when the tool fails.
  DMGUtility(Dialogs& dialogs, QWidget* page, QWidget* statusWindow = nullptr,
             QObject* parent = nullptr);

  void browseSourceBtn();
  void browseDestBtn();
  void chkEncryptImage();
  // Bytes as du counts them, in single precision.
  float getDirSize(const QString& path);
  void loadingProgress();
  void createDMGBtn();
  // Stops the image tool; it leaves no image behind.
  void btnCancelDMG();

  QLineEdit* sourcePath = nullptr;
  QLineEdit* destinationPath = nullptr;
  QLineEdit* imageName = nullptr;
  QLineEdit* targetSizeTextField = nullptr;
  QComboBox* targetSizeTypePopUp = nullptr;
  QCheckBox* chkEncryptImageOutlet = nullptr;
  QComboBox* encryptionAlgoPopUp = nullptr;
  QLabel* encryptionAlgoLabel = nullptr;
  QLabel* encryptionPassLabel = nullptr;
  QLabel* encryptionPassRepeatLabel = nullptr;
  QLineEdit* encryptionPassTextField = nullptr;
  QLineEdit* encryptionPassRepeatTextField = nullptr;
  QProgressBar* loadingSpin = nullptr;
  QLabel* loadingLabel = nullptr;
  QProgressBar* loadingProgressBar = nullptr;
  QPushButton* createDMGBtnOutlet = nullptr;
  QPushButton* cancelDMGBtn = nullptr;

 signals:
  // The image tool has ended (whatever its result).
  void creationFinished();

 private:
  void buildPage(QWidget* page);
  QString imagePath() const;
  QString chooseFolder(const QString& title);
  void setSpinning(bool spinning);
  void showStatus(const QString& message);

  Dialogs& dialogs_;
  QWidget* page_;
  QPointer<QWidget> statusWindow_;
  // The image tool's own runner, so that Cancel reaches nothing else; du
  // runs on another while it waits.
  ProcessToolRunner imageTool_;
  ProcessToolRunner sizes_;
  QString image_;  // the image being made
  QTimer progressTimer_;
  bool cancelled_ = false;
};
