#pragma once

#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class QStatusBar;

// The status bar's account of the last operation: what it did and where,
// with a button that shows the folder, or why it failed, with the tool's
// whole error output one click away. A failure stays until the next
// operation starts, another archive is opened or the tab changes.
// Plain status-bar messages show here too, so nothing else needs to know.
class OperationStatus : public QWidget {
  Q_OBJECT

 public:
  explicit OperationStatus(QStatusBar* bar);

  // Good news; folder, when given, gets a Show folder button.
  void showDone(const QString& text, const QString& folder = QString());
  // A failed run: its last error line, and its whole error output behind
  // Details….
  void showFailure(const QString& text, const QString& details);
  void clear();
  // A tool at work: an endless progress bar and a Cancel button.
  void setRunning(bool running);
  // A folder as the status bar names it: the home folder as "~".
  static QString placeText(const QString& folder);
  // "1 file" or "3 files": the count with the word that fits it.
  static QString counted(qsizetype count, const QString& one, const QString& many);

  QString text() const;
  bool failed() const { return failed_; }
  QPushButton* showFolderButton() const { return showFolder_; }
  QPushButton* detailsButton() const { return details_; }
  QPushButton* cancelButton() const { return cancel_; }

 signals:
  void showFolderRequested(const QString& folder);
  void cancelRequested();

 private:
  void showNote(const QString& text);
  void showDetails();

  QStatusBar* bar_;
  QLabel* icon_;
  QLabel* text_;
  QPushButton* showFolder_;
  QPushButton* details_;
  QProgressBar* progress_;
  QPushButton* cancel_;
  QString folder_;
  QString detailsText_;
  bool failed_ = false;
  bool settingMessage_ = false;
};
