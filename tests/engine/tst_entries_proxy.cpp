#include "engine/EntriesModel.h"
#include "engine/EntriesProxy.h"
#include "engine/EntrySortKeys.h"

#include <QTest>

namespace {

ArchiveEntry row(const QString& name, const QString& size = "0 B",
                 const QString& date = "2020-01-01 00:00:00") {
  return ArchiveEntry{name, {}, size, size, "0", date};
}

QStringList shownNames(const EntriesProxy& proxy) {
  QStringList names;
  for (int i = 0; i < proxy.rowCount(); ++i)
    names << proxy.index(i, EntriesModel::Name).data().toString();
  return names;
}

}  // namespace

class EntriesProxyTest : public QObject {
  Q_OBJECT

 private slots:
  void columnsSortByMeaning_data() {
    QTest::addColumn<ArchiveEntries>("rows");
    QTest::addColumn<int>("column");
    QTest::addColumn<QStringList>("ascending");
    QTest::newRow("names naturally, any case")
        << ArchiveEntries{row("file10.txt"), row("File2.txt"), row("file1.txt"), row("b")}
        << int(EntriesModel::Name) << QStringList{"b", "file1.txt", "File2.txt", "file10.txt"};
    QTest::newRow("sizes by bytes")
        << ArchiveEntries{row("mb", "1.50 MB"), row("b", "900 B"), row("kb", "2 KB"),
                          row("none", "---"), row("kb2", "10 KB")}
        << int(EntriesModel::OriginalSize) << QStringList{"none", "b", "kb", "kb2", "mb"};
    QTest::newRow("dates by time, whatever the form")
        << ArchiveEntries{row("late", "0 B", "2021-03-01 10:00:00"),
                          row("early", "0 B", "05-01-99 10:00"),
                          row("middle", "0 B", "2020-12-31 23:59:59.1234567")}
        << int(EntriesModel::DateModified) << QStringList{"early", "middle", "late"};
    QTest::newRow("equal values keep the tool's order")
        << ArchiveEntries{row("z", "1 KB"), row("a", "1 KB"), row("m", "1 KB")}
        << int(EntriesModel::PackedSize) << QStringList{"z", "a", "m"};
  }

  void columnsSortByMeaning() {
    QFETCH(ArchiveEntries, rows);
    QFETCH(int, column);
    QFETCH(QStringList, ascending);
    EntriesModel model;
    EntriesProxy proxy(&model);
    model.setEntries(rows);
    proxy.sort(column, Qt::AscendingOrder);
    QCOMPARE(shownNames(proxy), ascending);
    proxy.sort(column, Qt::DescendingOrder);
    QStringList descending = ascending;
    std::reverse(descending.begin(), descending.end());
    if (QByteArray(QTest::currentDataTag()).startsWith("equal"))
      return;
    QCOMPARE(shownNames(proxy), descending);
  }

  void toolOrderUntilSortedAndAfterNewRows() {
    EntriesModel model;
    EntriesProxy proxy(&model);
    model.setEntries({row("b"), row("a"), row("c")});
    QCOMPARE(shownNames(proxy), (QStringList{"b", "a", "c"}));
    proxy.sort(EntriesModel::Name);
    model.setEntries({row("y10"), row("y9"), row("x")});
    QCOMPARE(shownNames(proxy), (QStringList{"x", "y9", "y10"}));
    proxy.sort(-1);
    QCOMPARE(shownNames(proxy), (QStringList{"y10", "y9", "x"}));
  }

  void filterNarrowsByNameInAnyCase_data() {
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("shown");
    QTest::newRow("empty shows all") << QString() << QStringList{"Docs/", "docs/Read Me", "a.TXT"};
    QTest::newRow("any case") << "DOCS" << QStringList{"Docs/", "docs/Read Me"};
    QTest::newRow("inside the name") << "d m" << QStringList{"docs/Read Me"};
    QTest::newRow("no match") << "*" << QStringList{};
  }

  void filterNarrowsByNameInAnyCase() {
    QFETCH(QString, filter);
    QFETCH(QStringList, shown);
    EntriesModel model;
    EntriesProxy proxy(&model);
    model.setEntries({row("Docs/"), row("docs/Read Me"), row("a.TXT")});
    proxy.setNameFilter(filter);
    QCOMPARE(shownNames(proxy), shown);
    QCOMPARE(model.rowCount(), 3);
  }

  void foldersAreFoundFromTheirContents() {
    EntriesModel model;
    model.setEntries(
        {row("top"), row("top/inner"), row("top/inner/file.txt"), row("other/"), row("README")});
    QCOMPARE(model.isFolder(0), true);
    QCOMPARE(model.isFolder(1), true);
    QCOMPARE(model.isFolder(2), false);
    QCOMPARE(model.isFolder(3), true);
    QCOMPARE(model.isFolder(4), false);
    QVERIFY(!model.index(4, 0).data(Qt::DecorationRole).value<QIcon>().isNull());
    QCOMPARE(
        model.headerData(EntriesModel::OriginalSize, Qt::Horizontal, Qt::TextAlignmentRole).toInt(),
        int(Qt::AlignRight | Qt::AlignVCenter));
  }
};

QTEST_MAIN(EntriesProxyTest)
#include "tst_entries_proxy.moc"
