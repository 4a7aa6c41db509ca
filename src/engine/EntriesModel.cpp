#include "engine/EntriesModel.h"

#include "engine/EntrySortKeys.h"
#include "engine/PathText.h"
#include "platform/ResourceIcons.h"

#include <QMimeData>
#include <QUrl>

namespace {

bool isNumeric(int column) {
  return column == EntriesModel::OriginalSize || column == EntriesModel::PackedSize;
}

}  // namespace

EntriesModel::EntriesModel(QObject* parent) : QAbstractTableModel(parent) {}

void EntriesModel::setEntries(ArchiveEntries entries) {
  beginResetModel();
  entries_ = std::move(entries);
  folders_ = EntrySortKeys::folderNames(entries_);
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
    return iconOf(index.row());
  if (role == Qt::TextAlignmentRole && isNumeric(index.column()))
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

Qt::ItemFlags EntriesModel::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (index.isValid() && dragFiles_)
    flags |= Qt::ItemIsDragEnabled;
  return flags;
}

QStringList EntriesModel::mimeTypes() const {
  return {QStringLiteral("text/uri-list")};
}

QMimeData* EntriesModel::mimeData(const QModelIndexList& indexes) const {
  QList<int> rows;
  for (const QModelIndex& index : indexes)
    if (!rows.contains(index.row()))
      rows << index.row();
  std::sort(rows.begin(), rows.end());
  const QStringList paths = dragFiles_ ? dragFiles_(rows) : QStringList();
  if (paths.isEmpty())
    return nullptr;
  QList<QUrl> urls;
  for (const QString& path : paths)
    urls << QUrl::fromLocalFile(path);
  auto* data = new QMimeData;
  data->setUrls(urls);
  return data;
}

bool EntriesModel::isFolder(int row) const {
  const QString& name = entries_[row].name;
  return name.endsWith(u'/') || folders_.contains(name);
}

QIcon EntriesModel::iconOf(int row) const {
  const QString& name = entries_[row].name;
  if (isFolder(row)) {
    if (folderIcon_.isNull())
      folderIcon_ = ResourceIcons::themed(QStringLiteral("folder"), QStringLiteral("folder"));
    return folderIcon_;
  }
  if (PathText::pathExtension(name).isEmpty() && !name.contains(u".app", Qt::CaseInsensitive)) {
    if (documentIcon_.isNull())
      documentIcon_ =
          ResourceIcons::themed(QStringLiteral("text-x-generic"), QStringLiteral("document"));
    return documentIcon_;
  }
  return entries_[row].fileIcon;
}

QVariant EntriesModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole)
    return QVariant((isNumeric(section) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
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
