#include "engine/EntriesModel.h"

EntriesModel::EntriesModel(QObject* parent) : QAbstractTableModel(parent) {}

void EntriesModel::setEntries(ArchiveEntries entries) {
  beginResetModel();
  entries_ = std::move(entries);
  endResetModel();
}

int EntriesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

int EntriesModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : ColumnCount;
}

QVariant EntriesModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= entries_.size())
    return {};
  const ArchiveEntry& entry = entries_[index.row()];
  if (role == Qt::DecorationRole && index.column() == Name)
    return entry.fileIcon;
  if (role == Qt::TextAlignmentRole &&
      (index.column() == OriginalSize || index.column() == PackedSize))
    return QVariant(Qt::AlignRight | Qt::AlignVCenter);
  if (role != Qt::DisplayRole && role != Qt::ToolTipRole)
    return {};
  switch (index.column()) {
    case Name:
      return entry.name;
    case OriginalSize:
      return entry.originalSize;
    case PackedSize:
      return entry.packedSize;
    case Crc32:
      return entry.crc32;
    case DateModified:
      return entry.dateModified;
    default:
      return {};
  }
}

QVariant EntriesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
    return {};
  switch (section) {
    case Name:
      return tr("Name");
    case OriginalSize:
      return tr("Original size");
    case PackedSize:
      return tr("Packed size");
    case Crc32:
      return tr("CRC32");
    case DateModified:
      return tr("Date modified");
    default:
      return {};
  }
}
