#pragma once

#include "engine/ArchiveEntry.h"

#include <QAbstractTableModel>

// The rows of the opened archive for the entries table.
class EntriesModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Name, OriginalSize, PackedSize, Crc32, DateModified, ColumnCount };

  explicit EntriesModel(QObject* parent = nullptr);

  void setEntries(ArchiveEntries entries);
  const ArchiveEntries& entries() const { return entries_; }

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 private:
  ArchiveEntries entries_;
};
