#include "engine/EntriesProxy.h"

#include "engine/EntriesModel.h"
#include "engine/EntrySortKeys.h"

#include <QCollator>
#include <QLocale>

#include <limits>

EntriesProxy::EntriesProxy(EntriesModel* entries, QObject* parent) : QSortFilterProxyModel(parent) {
  setSourceModel(entries);
  connect(entries, &QAbstractItemModel::modelAboutToBeReset, this, &EntriesProxy::forgetKeys);
}

EntriesModel* EntriesProxy::entries() const {
  return static_cast<EntriesModel*>(sourceModel());
}

void EntriesProxy::setNameFilter(const QString& text) {
  if (text == filter_)
    return;
  filter_ = text;
  invalidateRowsFilter();
}

bool EntriesProxy::filterAcceptsRow(int sourceRow, const QModelIndex&) const {
  return filter_.isEmpty() ||
         entries()->entries()[sourceRow].name.contains(filter_, Qt::CaseInsensitive);
}

void EntriesProxy::forgetKeys() {
  nameKeys_.clear();
  numberKeys_.clear();
  numberKeysColumn_ = -1;
}

void EntriesProxy::prepareKeys(int column) const {
  const ArchiveEntries& rows = entries()->entries();
  if (column == EntriesModel::Name) {
    if (nameKeys_.size() == static_cast<size_t>(rows.size()))
      return;
    // The C locale collates by code point, so it gets a real language's rules.
    QCollator collator(QLocale().language() == QLocale::C ? QLocale(QLocale::English) : QLocale());
    collator.setNumericMode(true);
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    nameKeys_.clear();
    nameKeys_.reserve(rows.size());
    for (const ArchiveEntry& entry : rows)
      nameKeys_.push_back(collator.sortKey(entry.name));
    return;
  }
  if (numberKeysColumn_ == column && numberKeys_.size() == static_cast<size_t>(rows.size()))
    return;
  numberKeys_.clear();
  numberKeys_.reserve(rows.size());
  for (const ArchiveEntry& entry : rows) {
    switch (column) {
      case EntriesModel::OriginalSize:
        numberKeys_.push_back(EntrySortKeys::bytesOf(entry.originalSize));
        break;
      case EntriesModel::PackedSize:
        numberKeys_.push_back(EntrySortKeys::bytesOf(entry.packedSize));
        break;
      default:
        numberKeys_.push_back(
            EntrySortKeys::timeOf(entry.dateModified).value_or(std::numeric_limits<qint64>::min()));
        break;
    }
  }
  numberKeysColumn_ = column;
}

bool EntriesProxy::lessThan(const QModelIndex& left, const QModelIndex& right) const {
  const int column = left.column();
  const int a = left.row();
  const int b = right.row();
  if (column == EntriesModel::Crc32)
    return QSortFilterProxyModel::lessThan(left, right);
  prepareKeys(column);
  if (column == EntriesModel::Name) {
    const int order = nameKeys_[a].compare(nameKeys_[b]);
    return order != 0 ? order < 0 : a < b;
  }
  if (numberKeys_[a] != numberKeys_[b])
    return numberKeys_[a] < numberKeys_[b];
  // Equal values keep the tool's order; dates that are no date go by text.
  if (column == EntriesModel::DateModified &&
      numberKeys_[a] == std::numeric_limits<qint64>::min()) {
    const ArchiveEntries& rows = entries()->entries();
    return rows[a].dateModified < rows[b].dateModified;
  }
  return a < b;
}
