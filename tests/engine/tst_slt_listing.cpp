#include "engine/listing/SltListing.h"
#include "support/TestArchives.h"

#include <QTest>

namespace {

using Row = QStringList;  // name, original, packed, crc, date

struct Record {
  QString path;
  int size;
  QString packed;
  QString crc;
};

QList<Row> rowsOf(const ArchiveEntries& entries) {
  QList<Row> rows;
  for (const ArchiveEntry& entry : entries)
    rows << Row{entry.name, entry.originalSize, entry.packedSize, entry.crc32, entry.dateModified};
  return rows;
}

ArchiveEntries parse(const QByteArray& output, SltType type) {
  NoEntryIcons icons;
  return parseSltListing(OutputLines(output), type, icons);
}

// 7-Zip 9.04's technical listing of a zip: eleven lines above the first
// record, fourteen lines a record.
QByteArray zip904(const QList<Record>& records) {
  QByteArray text =
      "\n7-Zip (A) 9.04 beta  Copyright (c) 1999-2009 Igor Pavlov  2009-05-30\n\n"
      "Listing archive: t.zip\n\n--\nPath = t.zip\nType = zip\nPhysical Size = 1234\n\n"
      "----------\n";
  for (const Record& record : records) {
    text += "Path = " + record.path.toUtf8() +
            "\nFolder = -\nSize = " + QByteArray::number(record.size) +
            "\nPacked Size = " + record.packed.toUtf8() +
            "\nModified = 2009-01-02 03:04:05\nCreated = \nAccessed = \nAttributes = ....A\n"
            "Encrypted = -\nComment = \nCRC = " +
            record.crc.toUtf8() + "\nMethod = Deflate\nHost OS = FAT\n\n";
  }
  return text;
}

// A modern 7-Zip's listing of a 7z whose records carry the given keys
// between Path and the end; the archive block above changes length.
QByteArray modern7z(const QList<Record>& records, const QStringList& keys, int blockLines) {
  QByteArray text =
      "\n7-Zip [64] 26.02 : Copyright (c) 1999-2026 Igor Pavlov : 2026-06-25\n"
      "p7zip Version 16.02 (locale=C.UTF-8,Utf16=on,HugeFiles=on,64 bits,2 CPUs)\n\n"
      "Scanning the drive for archives:\n1 file, 999 bytes (1 KiB)\n\nListing archive: t.7z\n\n--\n"
      "Path = t.7z\nType = 7z\n";
  for (int i = 0; i < blockLines; ++i)
    text += "Property " + QByteArray::number(i) + " = x\n";
  text += "\n----------\n";
  for (const Record& record : records) {
    text += "Path = " + record.path.toUtf8() + '\n';
    for (const QString& key : keys) {
      QByteArray value = "x";
      if (key == "Size")
        value = QByteArray::number(record.size);
      else if (key == "Packed Size")
        value = record.packed.toUtf8();
      else if (key == "CRC")
        value = record.crc.toUtf8();
      else if (key == "Modified")
        value = "2026-11-23 04:41:14.4475213";
      text += key.toUtf8() + " = " + value + '\n';
    }
    text += '\n';
  }
  return text;
}

const QStringList kCommon7zKeys = {"Size", "Packed Size", "Modified", "Attributes",
                                   "CRC",  "Encrypted",   "Method",   "Block"};

}  // namespace

class SltListingTest : public QObject {
  Q_OBJECT

 private slots:
  void zip904WalksFixedStrides() {
    const auto rows = rowsOf(parse(zip904({{"a.txt", 1536, "700", "0000ABCD"},
                                           {"big.bin", 5 * 1048576, "1048576", "DEADBEEF"}}),
                                   SltType::Zip));
    QCOMPARE(rows,
             (QList<Row>{{"a.txt", "1 KB", "700 B", "0000ABCD", "2009-01-02 03:04:05"},
                         {"big.bin", "5.00 MB", "1.00 MB", "DEADBEEF", "2009-01-02 03:04:05"}}));
  }

  void applicationBundlesListOnlyTheBundle() {
    const auto rows = rowsOf(parse(
        zip904({{"App.app/Contents/MacOS/App", 10, "10", "11111111"}, {"App.app", 0, "0", ""}}),
        SltType::Zip));
    QCOMPARE(rows, (QList<Row>{{"App.app", "---", "---", "---", "2009-01-02 03:04:05"}}));
  }

  void duplicatePathsTakeTheFirstValues() {
    const auto rows =
        rowsOf(parse(zip904({{"same.txt", 1, "1", "AAAAAAAA"}, {"same.txt", 2, "2", "BBBBBBBB"}}),
                     SltType::Zip));
    QCOMPARE(rows.size(), 2);
    QCOMPARE(rows[1], rows[0]);
    QCOMPARE(rows[1][3], QString("AAAAAAAA"));
  }

  void sevenZip938UsesItsFixedLayout() {
    const auto rows = rowsOf(
        parse(TestArchives::fixture("tool-output/7z-9.38-p7zip-9.38.1-l-slt-7z-encrypted.txt"),
              SltType::SevenZip));
    QVERIFY(rows.size() >= 5);
    QCOMPARE(rows[0], (Row{"testarchive", "0 B", "0 B", "", "2016-03-23 07:40:06"}));
    QCOMPARE(rows[3], (Row{"testarchive/dir1/file1.txt", "32 B", "64 B", "034EE5C7",
                           "2015-05-17 19:41:48"}));
    QCOMPARE(rows[4][2], QString("0 B"));  // solid block: only the first file carries the size
  }

  void modernVersionsReadTheirLayoutFromTheOutput_data() {
    QTest::addColumn<QString>("fixture");
    QTest::addColumn<int>("type");
    QTest::addColumn<int>("count");
    QTest::addColumn<Row>("row");
    QTest::newRow("zip with AES, 16.02")
        << "7z-16.02-l-slt-zip-aes256.txt" << int(SltType::Zip) << 4
        << Row{"testarchive/file2.txt", "33 B", "58 B", "", "2016-11-06 21:17:02"};
    QTest::newRow("zip, 25.01") << "7z-25.01-l-slt-zip.txt" << int(SltType::Zip) << 6
                                << Row{"docs/weird'quote\"dquote.txt", "1 B", "1 B", "FBDB2615",
                                       "2026-09-25 15:59:53.9058506"};
    QTest::newRow("tar, 16.02") << "7z-16.02-p7zip-l-slt-tar.txt" << int(SltType::Tar) << -1
                                << Row{"0-REGTYPE-TEXT", "19 KB", "19 KB", "---",
                                       "2004-07-21 15:09:21"};
  }
  void modernVersionsReadTheirLayoutFromTheOutput() {
    QFETCH(QString, fixture);
    QFETCH(int, type);
    QFETCH(int, count);
    QFETCH(Row, row);
    const auto rows =
        rowsOf(parse(TestArchives::fixture("tool-output/" + fixture), static_cast<SltType>(type)));
    if (count >= 0)
      QCOMPARE(rows.size(), count);
    QVERIFY2(rows.contains(row), qPrintable(row.join(" | ")));
  }

  void sevenZipShapesChangePerArchive_data() {
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<int>("blockLines");
    QTest::addColumn<QString>("crc");
    QTest::newRow("common") << kCommon7zKeys << 5 << "12345678";
    QTest::newRow("with created and accessed")
        << QStringList{"Size",       "Packed Size", "Modified",  "Created", "Accessed",
                       "Attributes", "CRC",         "Encrypted", "Method",  "Block"}
        << 7 << "12345678";
    QTest::newRow("without attributes")
        << QStringList{"Size", "Packed Size", "Modified", "CRC", "Encrypted", "Method", "Block"}
        << 2 << "12345678";
    QTest::newRow("without CRC") << QStringList{"Size", "Packed Size", "Modified", "Method"} << 0
                                 << "";
  }
  void sevenZipShapesChangePerArchive() {
    QFETCH(QStringList, keys);
    QFETCH(int, blockLines);
    QFETCH(QString, crc);
    const QList<Record> records = {{"one.txt", 1536, "900", "12345678"},
                                   {"dir/two.bin", 5 * 1048576, "", "12345678"},
                                   {"three", 0, "", "12345678"}};
    const auto rows = rowsOf(parse(modern7z(records, keys, blockLines), SltType::SevenZip));
    const QString date = "2026-11-23 04:41:14.4475213";
    QCOMPARE(rows, (QList<Row>{{"one.txt", "1 KB", "900 B", crc, date},
                               {"dir/two.bin", "5.00 MB", "0 B", crc, date},
                               {"three", "0 B", "0 B", crc, date}}));
  }

  void outOfStepRecordsAreDropped() {
    // A 9.x listing whose first record is a line short: the fixed stride
    // lands on lines that are no "Path = " line, and their getters find
    // nothing, so those rows end without a value.
    QByteArray output =
        zip904({{"a.txt", 1, "1", "A"}, {"b.txt", 2, "2", "B"}, {"c.txt", 3, "3", "C"}});
    output.replace("Host OS = FAT\n\nPath = b.txt", "\nPath = b.txt");
    const auto rows = rowsOf(parse(output, SltType::Zip));
    QCOMPARE(rows.size(), 1);
    QCOMPARE(rows[0][0], QString("a.txt"));
  }

  void shortOutputListsNothing_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("password request") << QByteArray(
        "\n7-Zip [64] 26.02 : x\n\nListing archive: he.7z\n\n\nEnter password (will not be "
        "echoed):\n");
    QTest::newRow("old banner only") << QByteArray("\n7-Zip 9.20  Copyright\n\n");
    QTest::newRow("twelve blank lines") << QByteArray(12, '\n');
  }
  void shortOutputListsNothing() {
    QFETCH(QByteArray, output);
    for (SltType type : {SltType::Zip, SltType::Tar, SltType::SevenZip})
      QVERIFY(parse(output, type).isEmpty());
  }

  void streamingGivesTheSameRows_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<int>("type");
    QTest::newRow("9.04 zip, duplicates")
        << zip904({{"a", 1, "1", "A"}, {"a", 2, "2", "B"}, {"b", 3, "3", "C"}})
        << int(SltType::Zip);
    QTest::newRow("9.38 7z") << TestArchives::fixture(
                                    "tool-output/7z-9.38-p7zip-9.38.1-l-slt-7z-encrypted.txt")
                             << int(SltType::SevenZip);
    QTest::newRow("16.02 tar") << TestArchives::fixture("tool-output/7z-16.02-p7zip-l-slt-tar.txt")
                               << int(SltType::Tar);
    QTest::newRow("25.01 zip") << TestArchives::fixture("tool-output/7z-25.01-l-slt-zip.txt")
                               << int(SltType::Zip);
    QTest::newRow("26.02 7z, duplicates")
        << modern7z({{"x", 1, "1", "1"}, {"y.app", 2, "2", "2"}, {"x", 3, "3", "3"}}, kCommon7zKeys,
                    3)
        << int(SltType::SevenZip);
  }
  void streamingGivesTheSameRows() {
    QFETCH(QByteArray, output);
    QFETCH(int, type);
    const auto whole = rowsOf(parse(output, static_cast<SltType>(type)));
    QVERIFY(!whole.isEmpty());
    for (qsizetype piece : {1, 3, 64, 4096}) {
      NoEntryIcons icons;
      OutputLines lines;
      SltListingParser parser(static_cast<SltType>(type), icons);
      for (qsizetype at = 0; at < output.size(); at += piece) {
        lines.append(QByteArrayView(output).sliced(at, std::min(piece, output.size() - at)));
        parser.consume(lines);
      }
      lines.finish();
      QCOMPARE(rowsOf(parser.finish(lines)), whole);
    }
  }

  void bannersPickTheLayout_data() {
    QTest::addColumn<QByteArray>("banner");
    QTest::addColumn<bool>("readsOutput");
    QTest::newRow("9.04") << QByteArray("7-Zip (A) 9.04 beta  Copyright") << false;
    QTest::newRow("9.20") << QByteArray("7-Zip 9.20  Copyright (c) 1999-2010") << false;
    QTest::newRow("16.02") << QByteArray("7-Zip [64] 16.02 : Copyright") << true;
    QTest::newRow("26.02 7za") << QByteArray("7-Zip (a) [64] 26.02 : Copyright") << true;
  }
  void bannersPickTheLayout() {
    QFETCH(QByteArray, banner);
    QFETCH(bool, readsOutput);
    const OutputLines lines("\n" + banner + "\n\n");
    QCOMPARE(sltLayoutFor(lines, SltType::Zip)->readsOutput, readsOutput);
  }
};

QTEST_GUILESS_MAIN(SltListingTest)
#include "tst_slt_listing.moc"
