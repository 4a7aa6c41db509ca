#pragma once

#include <QCollatorSortKey>
#include <QSortFilterProxyModel>

#include <vector>

class EntriesModel;

// The entries table's view of the listing: the tool's order until a column
// is sorted (names naturally, sizes by bytes, dates by time) and only the
// rows whose name contains the filter text.
class EntriesProxy : public QSortFilterProxyModel {
  Q_OBJECT

 public:
  explicit EntriesProxy(EntriesModel* entries, QObject* parent = nullptr);

  EntriesModel* entries() const;
  // Rows whose name contains the text, in any case; all rows when empty.
  void setNameFilter(const QString& text);

 protected:
  bool lessThan(const QModelIndex& left, const QModelIndex& right) const override;
  bool filterAcceptsRow(int sourceRow, const QModelIndex& sourceParent) const override;

 private:
  void prepareKeys(int column) const;
  void forgetKeys();

  QString filter_;
  // Built the first time a column is sorted, dropped when the rows change.
  mutable std::vector<QCollatorSortKey> nameKeys_;
  mutable std::vector<qint64> numberKeys_;
  mutable int numberKeysColumn_ = -1;
};
