#pragma once

#include <QObject>

class QDialog;
class QLabel;
class QPushButton;
class QWidget;
class ToolRunner;

// The window that offers, once, to make Quillet the default application
// for archives. Either of its buttons ends the offer for good.
class supportedFilesFirstTimeAssociation : public QObject {
  Q_OBJECT

 public:
  supportedFilesFirstTimeAssociation(QWidget* parent, ToolRunner& runner);

  QDialog* mainWindow() const { return mainWindow_; }
  QPushButton* associateNowButton() const { return btnAssociateNow_; }

  // Centred on its owner, faded in from transparent.
  void showFadedIn();

  // Associates and leaves the window up.
  void btnAssociateNow();
  void btnClose();

 private:
  ToolRunner& runner_;
  QDialog* mainWindow_;
  QPushButton* btnAssociateNow_;
  QLabel* associationProblem_;
};
