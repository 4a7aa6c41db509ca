#include "create/SelectionListModel.h"

#include <algorithm>

SelectionListModel::SelectionListModel(QObject* parent) : QAbstractTableModel(parent) {
  setObjectName(QStringLiteral("theArrayController"));
}

void SelectionListModel::append(SelectionRow row) {
  const int at = static_cast<int>(rows_.size());
  beginInsertRows({}, at, at);
  rows_.append(std::move(row));
  endInsertRows();
}

// From the last row up, so the rows still to go keep their numbers.
void SelectionListModel::removeRows(QList<int> rows) {
  std::sort(rows.begin(), rows.end(), std::greater<>());
  rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
  for (int row : rows)
    removeRows(row, 1);
}

int SelectionListModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

int SelectionListModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant SelectionListModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= rows_.size())
    return {};
  const SelectionRow& row = rows_[index.row()];
  if (index.column() == Name) {
    if (role == Qt::DecorationRole)
      return row.fileIcon;
    if (role == Qt::DisplayRole)
      return row.name;
    if (role == Qt::ToolTipRole)
      return row.fullPath;
  }
  if (index.column() == Size) {
    if (role == Qt::DisplayRole)
      return row.fileSize;
    if (role == Qt::TextAlignmentRole)
      return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  }
  return {};
}

QVariant SelectionListModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal)
    return {};
  if (role == Qt::TextAlignmentRole && section == Size)
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole)
    return {};
  switch (section) {
    case Name:
      return tr("Name");
    case Size:
      return tr("Size");
    default:
      return {};
  }
}

bool SelectionListModel::removeRows(int row, int count, const QModelIndex& parent) {
  if (parent.isValid() || row < 0 || count <= 0 || row + count > rows_.size())
    return false;
  beginRemoveRows({}, row, row + count - 1);
  rows_.remove(row, count);
  endRemoveRows();
  return true;
}
