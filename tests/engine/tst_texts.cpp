#include "engine/ArchiveChecksum.h"
#include "engine/ArchiveType.h"
#include "engine/PathText.h"
#include "engine/SizeText.h"

#include <QTemporaryDir>
#include <QTest>

class TextsTest : public QObject {
  Q_OBJECT

 private slots:
  void pathRules_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("last");
    QTest::addColumn<QString>("extension");
    QTest::addColumn<QString>("parent");
    QTest::newRow("archive") << "/home/u/a.zip"
                             << "a.zip"
                             << "zip"
                             << "/home/u";
    QTest::newRow("case kept") << "/x/x.ZIP"
                               << "x.ZIP"
                               << "ZIP"
                               << "/x";
    QTest::newRow("double extension") << "a.tar.gz"
                                      << "a.tar.gz"
                                      << "gz"
                                      << "";
    QTest::newRow("hidden file") << "/h/.bashrc"
                                 << ".bashrc"
                                 << ""
                                 << "/h";
    QTest::newRow("trailing slash") << "dir/sub/"
                                    << "sub"
                                    << ""
                                    << "dir";
    QTest::newRow("root child") << "/a.7z"
                                << "a.7z"
                                << "7z"
                                << "/";
    QTest::newRow("dot in folder") << "/d.x/file"
                                   << "file"
                                   << ""
                                   << "/d.x";
    QTest::newRow("split volume") << "/v/b.7z.001"
                                  << "b.7z.001"
                                  << "001"
                                  << "/v";
  }
  void pathRules() {
    QFETCH(QString, path);
    QFETCH(QString, last);
    QFETCH(QString, extension);
    QFETCH(QString, parent);
    QCOMPARE(PathText::lastPathComponent(path), last);
    QCOMPARE(PathText::pathExtension(path), extension);
    QCOMPARE(PathText::deletingLastPathComponent(path), parent);
  }

  void intValue_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("value");
    QTest::newRow("plain") << "1536" << 1536;
    QTest::newRow("leading blanks and tail") << "  42 KB" << 42;
    QTest::newRow("sign") << "-7" << -7;
    QTest::newRow("none") << "abc" << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("saturates up") << "4294967296" << INT_MAX;
    QTest::newRow("saturates down") << "-99999999999" << INT_MIN;
    QTest::newRow("largest") << "2147483647" << INT_MAX;
  }
  void intValue() {
    QFETCH(QString, text);
    QFETCH(int, value);
    QCOMPARE(PathText::intValue(text), value);
    QCOMPARE(PathText::intValue(QByteArrayView(text.toUtf8())), value);
  }

  void listingSizes_data() {
    QTest::addColumn<int>("bytes");
    QTest::addColumn<QString>("listing");
    QTest::addColumn<QString>("archive");
    QTest::newRow("zero") << 0 << "0 B"
                          << "0 KB";
    QTest::newRow("1000") << 1000 << "1000 B"
                          << "0 KB";
    QTest::newRow("1023") << 1023 << "1023 B"
                          << "0 KB";
    QTest::newRow("1024") << 1024 << "1 KB"
                          << "1 KB";
    QTest::newRow("1536") << 1536 << "1 KB"
                          << "1 KB";
    QTest::newRow("1048575") << 1048575 << "1023 KB"
                             << "1023 KB";
    QTest::newRow("1 MiB") << 1048576 << "1.00 MB"
                           << "1.00 MB";
    QTest::newRow("1.5 MiB") << 1572864 << "1.50 MB"
                             << "1.50 MB";
    QTest::newRow("2 MiB") << 2097152 << "2.00 MB"
                           << "2.00 MB";
    QTest::newRow("5 MiB") << 5242880 << "5.00 MB"
                           << "5.00 MB";
    QTest::newRow("past 2 GiB read as 32 bits") << int(quint32(3221225472u)) << "-1073741824 B"
                                                << "-1048576 KB";
  }
  void listingSizes() {
    QFETCH(int, bytes);
    QFETCH(QString, listing);
    QFETCH(QString, archive);
    QCOMPARE(SizeText::listing(bytes), listing);
    QCOMPARE(SizeText::archive(bytes), archive);
  }

  void checksumText_data() {
    QTest::addColumn<quint64>("checksum");
    QTest::addColumn<QString>("text");
    QTest::newRow("all ones") << quint64(4294967295u) << "FFFFFFFF";
    QTest::newRow("zero") << quint64(0) << "0";
    QTest::newRow("no leading zeros") << quint64(0x0ABC) << "ABC";
    QTest::newRow("low 32 bits") << quint64(0x1FFFFFFFEull) << "FFFFFFFE";
  }
  void checksumText() {
    QFETCH(quint64, checksum);
    QFETCH(QString, text);
    QCOMPARE(ArchiveChecksum::text(checksum), text);
  }

  void checksumOfFile() {
    QTemporaryDir folder;
    const QString path = folder.filePath("check");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("123456789");
    file.close();
    QCOMPARE(ArchiveChecksum::GetCRC32(path), QString("CBF43926"));
    QCOMPARE(ArchiveChecksum::GetCRC32(folder.filePath("missing")), QString("0"));
  }

  void archiveSizeOfFile() {
    QTemporaryDir folder;
    QFile file(folder.filePath("a.zip"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(QByteArray(1000, 'x'));
    file.close();
    QCOMPARE(SizeText::archiveFile(file.fileName()), QString("0 KB"));
    QVERIFY(file.resize(2 * 1048576));
    QCOMPARE(SizeText::archiveFile(file.fileName()), QString("2.00 MB"));
  }

  void archiveTypes_data() {
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("icon");
    QTest::addColumn<bool>("converterIcon");
    QTest::newRow("zip") << "a.zip"
                         << "zip.icns" << true;
    QTest::newRow("upper-case zip is no type") << "x.ZIP"
                                               << "" << false;
    QTest::newRow("tbz2 shares bz2") << "a.tbz2"
                                     << "bz2.icns" << false;
    QTest::newRow("tar.gz is gz, no icon") << "a.tar.gz"
                                           << "" << false;
    QTest::newRow("bzip2 no icon") << "a.bzip2"
                                   << "" << false;
    QTest::newRow("first volume") << "a.7z.001"
                                  << "splitarchive.icns" << false;
    QTest::newRow("lha") << "a.lha"
                         << "lha.icns" << true;
    QTest::newRow("tgz") << "a.tgz"
                         << "tgz.icns" << false;
  }
  void archiveTypes() {
    QFETCH(QString, path);
    QFETCH(QString, icon);
    QFETCH(bool, converterIcon);
    const QString type = ArchiveType::ofPath(path);
    QCOMPARE(ArchiveType::iconResource(type), icon);
    QCOMPARE(ArchiveType::setsConverterIcon(type), converterIcon);
  }
};

QTEST_GUILESS_MAIN(TextsTest)
#include "tst_texts.moc"
