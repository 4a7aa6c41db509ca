#pragma once

#include <QObject>

#include <functional>

class QDialog;
class QLabel;
class QLineEdit;
class QWidget;
class ToolRunner;

// The checksum window: the MD5 digest of the archive open in the main
// window or, when none is, of the file handed over to the quick-extract
// route.
class MD5GeneratorClass : public QObject {
  Q_OBJECT

 public:
  using PathSource = std::function<QString()>;

  // filePathField is the main window's path of the open archive.
  MD5GeneratorClass(ToolRunner& runner, QLineEdit* filePathField, QWidget* owner,
                    QObject* parent = nullptr);

  QDialog* md5Window() const { return md5Window_; }
  QLineEdit* textField() const { return textField_; }
  // The path handed to the quick-extract route, read when it is needed.
  void setCustomContextMenuPathSource(PathSource source) {
    customContextMenuPath_ = std::move(source);
  }

  void btnMD5Generator();
  void btnClose();

 private:
  ToolRunner& runner_;
  QLineEdit* filePathField_;
  PathSource customContextMenuPath_;
  QDialog* md5Window_;
  QLabel* fileLabel_;
  QLineEdit* textField_;
  QLabel* problemLine_;
};
