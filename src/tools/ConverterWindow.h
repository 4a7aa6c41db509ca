#pragma once

#include <QDialog>

class QAbstractButton;
class QButtonGroup;
class QLabel;
class QLineEdit;
class QProgressBar;
class QPushButton;

// The converter's window: the archive to convert and its type, the source
// and target icons, the three target buttons, the password, the progress
// and the buttons. Modal while it is open, since a conversion works in the
// temporary folder that the main window's tools share.
class ConverterWindow : public QDialog {
  Q_OBJECT

 public:
  // The source icon is the main window's view: opening an archive sets it.
  ConverterWindow(QLabel* iconCurrent, QWidget* parent);

  QLineEdit* archivePath() const { return archivePath_; }
  QLineEdit* archiveType() const { return archiveType_; }
  QLineEdit* passwordTextField() const { return passwordTextField_; }
  QLabel* iconConverted() const { return iconConverted_; }
  QProgressBar* loadingIndicator() const { return loadingIndicator_; }
  QProgressBar* phaseLoadingIndicator() const { return phaseLoadingIndicator_; }
  QLabel* statusLine() const { return statusLine_; }
  QAbstractButton* zipButton() const { return zipButton_; }
  QAbstractButton* sevenZipButton() const { return sevenZipButton_; }
  QAbstractButton* rarButton() const { return rarButton_; }
  QPushButton* convertButton() const { return convertButton_; }
  QPushButton* closeButton() const { return closeButton_; }
  QPushButton* cancelButton() const { return cancelButton_; }

  // While a conversion runs only Cancel acts, and the window stays open.
  void setBusy(bool busy);
  bool isBusy() const { return busy_; }
  // Checks the button of a target; none for another method.
  void showTarget(QAbstractButton* target);

 signals:
  void cancelRequested();

 protected:
  void closeEvent(QCloseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QWidget* buildIcons();
  QWidget* buildTargets();

  QLineEdit* archivePath_;
  QLineEdit* archiveType_;
  QLineEdit* passwordTextField_;
  QLabel* iconCurrent_;
  QLabel* iconConverted_;
  QProgressBar* loadingIndicator_;
  QProgressBar* phaseLoadingIndicator_;
  QLabel* statusLine_;
  QButtonGroup* targets_;
  QAbstractButton* zipButton_;
  QAbstractButton* sevenZipButton_;
  QAbstractButton* rarButton_;
  QPushButton* convertButton_;
  QPushButton* closeButton_;
  QPushButton* cancelButton_;
  QList<QWidget*> settings_;
  bool busy_ = false;
};
