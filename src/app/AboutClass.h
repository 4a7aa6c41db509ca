#pragma once

#include <QObject>

class QDialog;
class QLabel;
class QWidget;

// The about box: the application's name, version and purpose.
class AboutClass : public QObject {
  Q_OBJECT

 public:
  explicit AboutClass(QWidget* parent);

  QDialog* aboutWindow() const { return aboutWindow_; }
  QLabel* versionLabel() const { return versionLabel_; }

  void menuAbout();
  void btnCool();

 private:
  QDialog* aboutWindow_;
  QLabel* versionLabel_;
};
