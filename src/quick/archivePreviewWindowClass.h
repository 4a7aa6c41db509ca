#pragma once

#include <QPointF>
#include <QWidget>

class QLabel;
class QProgressBar;
class QPushButton;
class QStandardItemModel;
class QTableView;

// The mini archive browser's window: no title bar, resizable by its corner,
// above other windows; it fades in. It is not dragged about: it comes
// up beside the quick-extract panel.
class archivePreviewWindowClass : public QWidget {
  Q_OBJECT

 public:
  // Where a row keeps its entry's name as listed.
  static constexpr int kFileNameRole = Qt::UserRole;

  explicit archivePreviewWindowClass(QWidget* parent = nullptr);

  QTableView* openedArchiveTableView() const { return table_; }
  QStandardItemModel* theArrayController() const { return rows_; }
  QLabel* fieldOpenedArchiveNumberOfFiles() const { return count_; }
  QProgressBar* loadingArchiveListingLoader() const { return loader_; }
  QPushButton* addButton() const { return add_; }
  QPushButton* removeButton() const { return remove_; }
  QPushButton* extractButton() const { return extract_; }
  QPushButton* quitButton() const { return quit_; }

  void showArchiveName(const QString& name);
  // One line under the list saying what a tool run could not do; an empty
  // text hides it.
  void showProblem(const QString& message);
  void startLoader();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void elideName();
  void enableSelectionActions();

  QLabel* name_;
  QTableView* table_;
  QStandardItemModel* rows_;
  QLabel* count_;
  QProgressBar* loader_;
  QLabel* problem_;
  QPushButton* add_;
  QPushButton* remove_;
  QPushButton* extract_;
  QPushButton* quit_;
};
