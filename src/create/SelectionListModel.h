#pragma once

#include <QAbstractTableModel>
#include <QIcon>
#include <QList>

// One file or folder the next archive will contain.
struct SelectionRow {
  QIcon fileIcon;
  QString name;      // last path component
  QString fullPath;  // absolute
  QString fileSize;  // already worded for display
};

// The items of the create-archive tab, in the order they were added; the
// same path added twice is two rows.
class SelectionListModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Name, Size, ColumnCount };

  explicit SelectionListModel(QObject* parent = nullptr);

  void append(SelectionRow row);
  // Removes the given rows, in any order and with repeats.
  void removeRows(QList<int> rows);
  const QList<SelectionRow>& rows() const { return rows_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
  bool removeRows(int row, int count, const QModelIndex& parent = {}) override;

 private:
  QList<SelectionRow> rows_;
};
