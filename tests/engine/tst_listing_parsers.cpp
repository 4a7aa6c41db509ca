#include "engine/listing/ArjListing.h"
#include "engine/listing/LhaListing.h"
#include "engine/listing/RarListing.h"
#include "support/TestArchives.h"

#include <QTest>

namespace {

using Row = QStringList;  // name, original, packed, crc, date

QList<Row> rowsOf(const ArchiveEntries& entries) {
  QList<Row> rows;
  for (const ArchiveEntry& entry : entries)
    rows << Row{entry.name, entry.originalSize, entry.packedSize, entry.crc32, entry.dateModified};
  return rows;
}

// "rar l" of the 3.x compressor: two banner lines, names first.
const QByteArray kRar3Listing =
    "\n"
    "RAR 3.90 beta 2   Copyright (c) 1993-2009 Alexander Roshal   3 Jun 2009\n"
    "Shareware version         Type RAR -? for help\n"
    "\n"
    "Archive pack.rar\n"
    "\n"
    " Name             Size   Packed Ratio  Date   Time     Attr      CRC   Meth Ver\n"
    "-------------------------------------------------------------------------------\n"
    " ClearfaceSSi.7z   135291   135699 100% 13-07-09 17:56 -rw-r--r-- 3A28C02D m3c 2.9\n"
    "*secret file.txt     1536     1000  66% 14-07-09 08:01 -rw-r--r-- 0000ABCD m3c 2.9\n"
    " my  file.txt          10       10 100% 13-07-09 17:56 -rw-r--r-- 11111111 m3c 2.9\n"
    " Tool.app               0        0   0% 13-07-09 17:56 drwxr-xr-x 00000000 m0  2.0\n"
    "-------------------------------------------------------------------------------\n"
    "    4           136837   136733 100%\n"
    "\n";

// "arj l" of arj 3.10.22, as it prints on Debian: the long name stands alone
// and ends in a blank.
const QByteArray kArj310Listing =
    "ARJ32 v 3.10, Copyright (c) 1998-2004, ARJ Software Russia.\n"
    "\n"
    "Processing archive: t.arj\n"
    "Archive created: 2026-11-23 04:41:38, modified: 2026-11-23 04:41:38\n"
    "Filename       Original Compressed Ratio DateTime modified Attributes/GUA BPMGS\n"
    "------------ ---------- ---------- ----- ----------------- -------------- -----\n"
    "a.txt                 6          6 1.000 26-11-23 04:41:14 -rw-r--r-- ---   0  \n"
    "b.bin              5000       5000 1.000 26-11-23 04:41:14 -rw-r--r-- ---  +0  \n"
    "ünï cödé long.txt \n"
    "                      2          2 1.000 26-11-23 04:41:14 -rw-r--r-- ---  +0  \n"
    "------------ ---------- ---------- -----\n"
    "     3 files       5008       5008 1.000 \n";

// lhasa 0.3.1 "v" of an archive made by jlha ([generic] host) and of one
// made on Unix, with a size wider than its column.
const QByteArray kLhasaGenericListing =
    " PERMSSN    UID  GID    PACKED    SIZE  RATIO METHOD CRC     STAMP          NAME\n"
    "---------- ----------- ------- ------- ------ ---------- ------------ -------------\n"
    "[generic]                    6       6 100.0% -lh0- 5a34 Nov 23 04:41 a.txt\n"
    "[generic]                 5000    5000 100.0% -lh0- 5fae Nov 23 04:41 dir one/b.bin\n"
    "---------- ----------- ------- ------- ------ ---------- ------------ -------------\n"
    " Total         2 files    5006    5006 100.0%            Nov 23 04:41\n";
const QByteArray kLhasaUnixListing =
    " PERMSSN    UID  GID    PACKED    SIZE  RATIO METHOD CRC     STAMP          NAME\n"
    "---------- ----------- ------- ------- ------ ---------- ------------ -------------\n"
    "-rw-r--r--     0/0      45678 12345678   0.4% -lh5- 1a2b Jan  1  2010 big dir/huge.bin\n"
    "---------- ----------- ------- ------- ------ ---------- ------------ -------------\n"
    " Total         1 file     45678 12345678   0.4%            Jan  1  2010\n";

}  // namespace

class ListingParsersTest : public QObject {
  Q_OBJECT

 private slots:
  void rar3ReadsColumnsFromTheEnd() {
    RecordingIcons icons;
    const auto rows = rowsOf(parseRarListing(OutputLines(kRar3Listing), icons));
    QCOMPARE(rows, (QList<Row>{
                       {"ClearfaceSSi.7z", "132 KB", "132 KB", "3A28C02D", "13-07-09 17:56"},
                       {"secret file.txt", "1 KB", "1000 B", "0000ABCD", "14-07-09 08:01"},
                       {"my", "10 B", "10 B", "11111111", "13-07-09 17:56"},
                       {"Tool.app", "---", "---", "---", "13-07-09 17:56"},
                   }));
    // The icon is chosen from the name with its first character.
    QCOMPARE(icons.names.value(1), QString("*secret file.txt"));
  }

  void rar5ListsBetweenTheRulers_data() {
    QTest::addColumn<QString>("fixture");
    QTest::addColumn<int>("count");
    QTest::addColumn<QStringList>("first");
    QTest::newRow("rar 5.50 unix")
        << "rar-5.50-l-rar5.txt" << 7
        << QStringList{"tmp/tmp1.txt", "0 B", "---", "---", "2018-10-11 00:27"};
    QTest::newRow("encrypted, star glued")
        << "unrar-7.20b2-l-encrypted-unix-attrs.txt" << 1
        << QStringList{"flag.png", "99 KB", "---", "---", "2024-04-29 01:42"};
    QTest::newRow("encrypted headers, star apart")
        << "unrar-6.00b1-l-encrypted-headers.txt" << 2
        << QStringList{"Patient_Information.xml_;.lnk", "1 KB", "---", "---", "2020-10-26 18:34"};
    QTest::newRow("names padded with blanks")
        << "unrar-5.30b2-l-rar4-sfx-trailing-spaces.txt" << 2
        << QStringList{"acid.txt", "92 B", "---", "---", "2015-08-23 18:16"};
    QTest::newRow("nine-digit sizes")
        << "unrar-6.00-l-rar5-many-files-dirs.txt" << 31
        << QStringList{"isolinux.bin", "24 KB", "---", "---", "2019-11-17 15:59"};
  }
  void rar5ListsBetweenTheRulers() {
    QFETCH(QString, fixture);
    QFETCH(int, count);
    QFETCH(QStringList, first);
    NoEntryIcons icons;
    const auto rows = rowsOf(
        parseRarListing(OutputLines(TestArchives::fixture("tool-output/" + fixture)), icons));
    QCOMPARE(rows.size(), count);
    QCOMPARE(rows.first(), first);
  }

  void shortOutputListsNothing_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("banner only") << QByteArray("\nRAR 3.90\n\n");
    QTest::newRow("eleven lines") << QByteArray(11, '\n');
  }
  void shortOutputListsNothing() {
    QFETCH(QByteArray, output);
    NoEntryIcons icons;
    const OutputLines lines(output);
    QVERIFY(parseRarListing(lines, icons).isEmpty());
    QVERIFY(parseArjListing(lines, icons).isEmpty());
    QVERIFY(parseLhaListing(lines, LhaVersion::Lhasa, icons).isEmpty());
    QVERIFY(parseLhaListing(lines, LhaVersion::LhaForUnix114, icons).isEmpty());
  }

  void rar3WithoutEntriesListsNothing() {
    const QByteArray listing = kRar3Listing.left(kRar3Listing.indexOf(" Clear")) + "---\n    0\n\n";
    NoEntryIcons icons;
    QVERIFY(parseRarListing(OutputLines(listing), icons).isEmpty());
  }

  void arj310JoinsLongNamesWithTheirValues() {
    NoEntryIcons icons;
    const auto rows = rowsOf(parseArjListing(OutputLines(kArj310Listing), icons));
    QCOMPARE(rows, (QList<Row>{
                       {"a.txt", "6 B", "6 B", "---", "26-11-23 04:41:14"},
                       {"b.bin", "4 KB", "4 KB", "---", "26-11-23 04:41:14"},
                       {"ünï cödé long.txt", "2 B", "2 B", "---", "26-11-23 04:41:14"},
                   }));
  }

  void arjOriginalKeepsTheLoneNameAsItStands() {
    QByteArray listing = kArj310Listing;
    listing.replace("ARJ32 v 3.10", "ARJ 2.41a");
    NoEntryIcons icons;
    const auto rows = rowsOf(parseArjListing(OutputLines(listing), icons));
    QCOMPARE(rows.size(), 3);
    QCOMPARE(rows[2].first(), QString("ünï cödé long.txt "));
  }

  void lha114CountsFromTheFront_data() {
    QTest::addColumn<QString>("fixture");
    QTest::addColumn<QList<Row>>("rows");
    QTest::newRow("lh5") << "lha-114i-v-lh5.txt"
                         << QList<Row>{{"gpl-2", "17 KB", "6 KB", "a33a", "Jan.1 2010"}};
    QTest::newRow("folders show their last component")
        << "lha-114i-v-unix-subdir.txt"
        << QList<Row>{{"subdir", "0 B", "0 B", "0000", "Apr.24 20:31"},
                      {"subdir2", "0 B", "0 B", "0000", "Apr.24 20:31"},
                      {"hello.txt", "12 B", "12 B", "9778", "Jan.1 2010"}};
    QTest::newRow("symlink") << "lha-114i-v-symlink.txt"
                             << QList<Row>{
                                    {"symlink -> target", "0 B", "0 B", "0000", "Jan.1 2010"}};
  }
  void lha114CountsFromTheFront() {
    QFETCH(QString, fixture);
    QFETCH(QList<Row>, rows);
    NoEntryIcons icons;
    const OutputLines lines(TestArchives::fixture("tool-output/" + fixture));
    QCOMPARE(rowsOf(parseLhaListing(lines, LhaVersion::LhaForUnix114, icons)), rows);
  }

  void lhasaCountsPerLine_data() {
    QTest::addColumn<QByteArray>("output");
    QTest::addColumn<QList<Row>>("rows");
    QTest::newRow("generic host") << kLhasaGenericListing
                                  << QList<Row>{{"a.txt", "6 B", "6 B", "5a34", "Nov.23 04:41"},
                                                {"b.bin", "4 KB", "4 KB", "5fae", "Nov.23 04:41"}};
    QTest::newRow("wide size moves the name")
        << kLhasaUnixListing << QList<Row>{{"huge.bin", "11.77 MB", "44 KB", "1a2b", "Jan.1 2010"}};
    QTest::newRow("ms-dos host") << TestArchives::fixture("tool-output/lha-114i-v-msdos-subdir.txt")
                                 << QList<Row>{{"hello.txt", "12 B", "12 B", "9778", "Jan.1 2010"}};
  }
  void lhasaCountsPerLine() {
    QFETCH(QByteArray, output);
    QFETCH(QList<Row>, rows);
    NoEntryIcons icons;
    QCOMPARE(rowsOf(parseLhaListing(OutputLines(output), LhaVersion::Lhasa, icons)), rows);
  }

  void lhaVersionComesFromTheUsage() {
    QCOMPARE(lhaVersionFromUsage("LHa for UNIX version 1.14i-ac20050924p1"),
             LhaVersion::LhaForUnix114);
    QCOMPARE(lhaVersionFromUsage("Lhasa v0.3.1 command line LHA tool"), LhaVersion::Lhasa);
  }

  void applicationEntriesShowNoValues() {
    QByteArray listing = kLhasaGenericListing;
    listing.replace("dir one/b.bin", "Some.APP/Contents");
    NoEntryIcons icons;
    const auto rows = rowsOf(parseLhaListing(OutputLines(listing), LhaVersion::Lhasa, icons));
    QCOMPARE(rows[1], (Row{"Contents", "---", "---", "---", "Nov.23 04:41"}));
  }
};

QTEST_GUILESS_MAIN(ListingParsersTest)
#include "tst_listing_parsers.moc"
