#pragma once

#include "engine/ArchiveEntry.h"

#include <QAbstractTableModel>
#include <QSet>

#include <functional>

// The rows of the opened archive for the entries table.
class EntriesModel : public QAbstractTableModel {
  Q_OBJECT

 public:
  enum Column { Name, OriginalSize, PackedSize, Crc32, DateModified, ColumnCount };

  explicit EntriesModel(QObject* parent = nullptr);

  void setEntries(ArchiveEntries entries);
  const ArchiveEntries& entries() const { return entries_; }
  // A folder row: named with a trailing "/" or holding other rows.
  bool isFolder(int row) const;

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  // Dragged rows become the files this makes of them (their paths).
  using DragFiles = std::function<QStringList(const QList<int>& rows)>;
  void setDragFiles(DragFiles files) { dragFiles_ = std::move(files); }
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QStringList mimeTypes() const override;
  QMimeData* mimeData(const QModelIndexList& indexes) const override;

 private:
  QIcon iconOf(int row) const;

  ArchiveEntries entries_;
  QSet<QString> folders_;
  mutable QIcon folderIcon_;
  mutable QIcon documentIcon_;
  DragFiles dragFiles_;
};
