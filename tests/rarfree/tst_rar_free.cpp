#include "engine/SizeText.h"
#include "engine/listing/RarListing.h"
#include "support/TestArchives.h"

#include <QCryptographicHash>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

namespace {

struct Finished {
  int exitCode = -1;
  QByteArray output;
  QByteArray errors;

  QByteArray lastErrorLine() const { return errors.trimmed().split('\n').last(); }
};

Finished runIn(const QString& folder, const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setWorkingDirectory(folder);
  process.setStandardInputFile(QProcess::nullDevice());
  process.start(program, arguments);
  if (!process.waitForFinished(120000))
    qFatal("%s did not finish", qPrintable(program));
  return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

Finished adapter(const QString& folder, const QString& name, const QStringList& arguments) {
  return runIn(folder, qEnvironmentVariable("QUILLET_TOOLS_DIR") + u'/' + name, arguments);
}

QString passwordSwitch(const QString& password) {
  return password.isEmpty() ? QStringLiteral("-p{}") : QStringLiteral("-p") + password;
}

// The fixture's files copied into work/box, the archive's own folder.
QString boxWith(const QTemporaryDir& work, const QStringList& files) {
  const QString box = work.filePath(QStringLiteral("box"));
  QDir().mkpath(box);
  for (const QString& file : files) {
    const QString copy = box + u'/' + QFileInfo(file).fileName();
    if (!QFile::copy(TestArchives::fixturePath(QStringLiteral("rar/") + file), copy))
      qFatal("cannot copy fixture %s", qPrintable(file));
  }
  return box;
}

// "name|size|CRC|date" of each entry 7-Zip lists, as Quillet would show it.
QStringList sevenZipRows(const QString& archive, const QString& password) {
  QStringList arguments = {QStringLiteral("l"), QStringLiteral("-slt")};
  if (!password.isEmpty())
    arguments << QStringLiteral("-p") + password;
  const Finished listed = runIn(QFileInfo(archive).path(), QStringLiteral("7z"),
                                arguments << QStringLiteral("--") << archive);
  const QStringList lines = QString::fromUtf8(listed.output).split(u'\n');
  QStringList rows;
  QHash<QString, QString> record;
  for (qsizetype i = lines.indexOf(QStringLiteral("----------")); i >= 0 && i < lines.size(); ++i) {
    const qsizetype separator = lines[i].indexOf(QStringLiteral(" = "));
    if (separator > 0) {
      record.insert(lines[i].left(separator), lines[i].mid(separator + 3));
    } else if (record.contains(QStringLiteral("Path"))) {
      const QString crc = record.value(QStringLiteral("CRC"));
      rows << QStringList{record.value(QStringLiteral("Path")),
                          SizeText::listing(record.value(QStringLiteral("Size")).toInt()),
                          crc.isEmpty() ? QStringLiteral("00000000") : crc,
                          record.value(QStringLiteral("Modified")).left(19)}
                  .join(u'|');
      record.clear();
    }
  }
  return rows;
}

QStringList rowsOf(const ArchiveEntries& entries) {
  QStringList rows;
  for (const ArchiveEntry& entry : entries)
    rows << QStringList{entry.name, entry.originalSize, entry.crc32, entry.dateModified}.join(u'|');
  return rows;
}

// Every item under root, links as links: "path: folder", "path: -> target"
// or "path: <SHA-1 of the content>".
QStringList treeOf(const QString& root) {
  QStringList tree;
  QDirIterator items(root, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
  while (items.hasNext()) {
    const QFileInfo item(items.next());
    QString description;
    if (item.isSymLink()) {
      description = QStringLiteral("-> ") +
                    QString::fromStdString(
                        std::filesystem::read_symlink(item.filePath().toStdString()).string());
    } else if (item.isDir()) {
      description = QStringLiteral("folder");
    } else {
      QFile file(item.filePath());
      file.open(QIODevice::ReadOnly);
      description = QCryptographicHash::hash(file.readAll(), QCryptographicHash::Sha1).toHex();
    }
    tree << QDir(root).relativeFilePath(item.filePath()) + QStringLiteral(": ") + description;
  }
  tree.sort();
  return tree;
}

QStringList withoutEntries(QStringList tree, const QStringList& names) {
  for (const QString& name : names)
    tree.removeIf(
        [&](const QString& item) { return item.startsWith(name + QStringLiteral(": ")); });
  return tree;
}

// "stem.part01.rar" to "stem.partNN.rar".
QStringList volumes(const QString& stem, int count) {
  QStringList files;
  for (int i = 1; i <= count; ++i)
    files << stem + QStringLiteral(".part%1.rar").arg(i, 2, 10, QChar(u'0'));
  return files;
}

}  // namespace

// The rar-free stand-in, run through the unrar and r adapters as Quillet
// runs them, on copies of the RAR fixtures, judged against what 7-Zip and
// The Unarchiver themselves report.
class RarFreeTest : public QObject {
  Q_OBJECT

 private:
  // One row per fixture situation. files: copied side by side, the first
  // is what 7-Zip lists; open: the file handed over (default the first).
  // notExtracted: what unar's own output holds that must not reach the
  // destination. The reasons are parts of the last line on standard error.
  static void fixtureRows() {
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("open");
    QTest::addColumn<QString>("password");
    QTest::addColumn<bool>("encrypted");
    QTest::addColumn<bool>("listsWhole");
    QTest::addColumn<bool>("testsSound");
    QTest::addColumn<QString>("testReason");
    QTest::addColumn<QStringList>("notExtracted");
    QTest::addColumn<bool>("extractsWhole");
    QTest::addColumn<QString>("extractReason");

    const QStringList none;
    const QString rar4AesReason = QStringLiteral("RAR4 encryption needs RARLAB's unrar");
    const QString wrongPassword = QStringLiteral("wrong password");
    auto sound = [&](const char* tag, const QStringList& files, const QString& open = QString(),
                     const QString& password = QString(), bool encrypted = false) {
      QTest::newRow(tag) << files << open << password << encrypted << true << true << QString()
                         << none << true << QString();
    };
    sound("rar4 basic", {"rar4/basic.rar"});
    sound("rar4 solid", {"rar4/solid.rar"});
    sound("rar4 folders", {"rar4/folders.rar"});
    sound("rar4 unicode", {"rar4/unicode.rar"});
    sound("rar4 old encryption", {"rar4/comment-oldcrypt.rar"}, {}, "password", true);
    sound("rar4 volumes", volumes("rar4/multivolume", 7));
    sound("rar4 volumes from a later part", volumes("rar4/multivolume", 7),
          "multivolume.part04.rar");
    sound("rar4 old volume names", {"rar4/oldnames.rar", "rar4/oldnames.r00", "rar4/oldnames.r01"});
    sound("rar5 plain", {"rar5/plain.rar"});
    sound("rar5 solid", {"rar5/solid.rar"});
    sound("rar5 folders", {"rar5/folders.rar"});
    sound("rar5 unicode and links", {"rar5/unicode.rar"});
    sound("rar5 symlinks", {"rar5/symlinks.rar"});
    sound("rar5 volumes", volumes("rar5/multivolume", 6));
    sound("rar5 volumes from a later part", volumes("rar5/multivolume", 6),
          "multivolume.part03.rar");
    sound("rar5 encrypted data", {"rar5/encrypted-data.rar"}, {}, "password", true);
    sound("rar5 encrypted names", {"rar5/encrypted-headers.rar"}, {}, "password", true);

    QTest::newRow("rar4 truncated")
        << QStringList{"rar4/truncated.rar"} << QString() << QString() << false << false << false
        << "failed the test" << QStringList{"dist/files/bin/res/common.pak"} << false
        << "common.pak";
    QTest::newRow("rar4 volume set missing parts")
        << QStringList{"rar4/multivolume.part01.rar"} << QString() << QString() << false << false
        << false << "Missing volume" << QStringList{"exe/test.exe"} << false << "exe/test.exe";
    QTest::newRow("rar4 AES-encrypted data")
        << QStringList{"rar4/encrypted-data.rar"} << QString() << "12345678" << true << true
        << false << rar4AesReason << QStringList{"foo.txt", "bar.txt"} << false << rar4AesReason;
    QTest::newRow("rar4 encrypted names")
        << QStringList{"rar4/encrypted-headers.rar"} << QString() << "12345678" << true << true
        << false << rar4AesReason << none << false << rar4AesReason;
    QTest::newRow("rar4 encrypted names, wrong password")
        << QStringList{"rar4/encrypted-headers.rar"} << QString() << "wrong" << true << false
        << false << wrongPassword << none << false << wrongPassword;
    QTest::newRow("rar5 damaged") << QStringList{"rar5/damaged.rar"} << QString() << QString()
                                  << false << false << false << "damaged" << none << false
                                  << "damaged";
    QTest::newRow("rar5 volume set missing parts")
        << QStringList{"rar5/multivolume.part01.rar"} << QString() << QString() << false << false
        << false << "nothing in the archive could be tested" << none << false
        << "No files extracted.";
    QTest::newRow("rar5 encrypted data, wrong password")
        << QStringList{"rar5/encrypted-data.rar"} << QString() << "wrong" << true << true << false
        << wrongPassword << QStringList{"stest1.txt", "stest2.txt"} << false << wrongPassword;
    QTest::newRow("rar5 encrypted names, wrong password")
        << QStringList{"rar5/encrypted-headers.rar"} << QString() << "wrong" << true << false
        << false << wrongPassword << none << false << wrongPassword;
    QTest::newRow("rar5 two passwords, one given")
        << QStringList{"rar5/encrypted-mixed.rar"} << QString() << "password" << true << true
        << false << "d.txt" << QStringList{"d.txt"} << false << "d.txt";
    QTest::newRow("rar5 link out of the folder")
        << QStringList{"rar5/symlink-escape.rar"} << QString() << QString() << false << true << true
        << QString() << QStringList{"up"} << false << "outside the destination";
  }

  static QString openedIn(const QString& box, const QStringList& files, const QString& open) {
    return box + u'/' + (open.isEmpty() ? QFileInfo(files.first()).fileName() : open);
  }

 private slots:
  void listingReadsAsQuilletExpects_data() { fixtureRows(); }
  void listingReadsAsQuilletExpects() {
    QFETCH(QStringList, files);
    QFETCH(QString, open);
    QFETCH(QString, password);
    QFETCH(bool, listsWhole);
    QTemporaryDir work;
    const QString box = boxWith(work, files);
    const Finished listed =
        adapter(box, "r", {"l", passwordSwitch(password), openedIn(box, files, open)});

    RecordingIcons icons;
    const ArchiveEntries entries = parseRarListing(OutputLines(listed.output), icons);
    QCOMPARE(rowsOf(entries), sevenZipRows(openedIn(box, files, {}), password));
    QCOMPARE(listed.exitCode == 0, listsWhole);
    QCOMPARE(listed.errors.isEmpty(), listsWhole);
  }

  void probeMarksEncryptedArchives_data() { fixtureRows(); }
  void probeMarksEncryptedArchives() {
    QFETCH(QStringList, files);
    QFETCH(QString, open);
    QFETCH(bool, encrypted);
    QTemporaryDir work;
    const QString box = boxWith(work, files);
    const Finished probed = adapter(box, "unrar", {"l", openedIn(box, files, open)});
    QCOMPARE(probed.output.contains('*'), encrypted);
  }

  void starInTheArchiveNameIsNoMark() {
    QTemporaryDir work;
    const QString box = boxWith(work, {"rar5/plain.rar"});
    QVERIFY(QFile::rename(box + "/plain.rar", box + "/st*r.rar"));
    const Finished probed = adapter(box, "unrar", {"l", box + "/st*r.rar"});
    QCOMPARE(probed.exitCode, 0);
    QVERIFY(probed.output.contains("test4.bin"));
    QVERIFY(!probed.output.contains('*'));
  }

  void testSaysAllOkOnlyWhenSound_data() { fixtureRows(); }
  void testSaysAllOkOnlyWhenSound() {
    QFETCH(QStringList, files);
    QFETCH(QString, open);
    QFETCH(QString, password);
    QFETCH(bool, testsSound);
    QFETCH(QString, testReason);
    QTemporaryDir work;
    const QString box = boxWith(work, files);
    QStringList arguments = {"t"};
    if (!password.isEmpty())
      arguments << "-p" + password;
    const Finished tested = adapter(box, "unrar", arguments << openedIn(box, files, open));

    QCOMPARE(tested.output.contains("All OK"), testsSound);
    QCOMPARE(tested.exitCode == 0, testsSound);
    if (testsSound)
      QVERIFY(tested.output.trimmed().endsWith("\nAll OK"));
    else
      QVERIFY2(tested.lastErrorLine().contains(testReason.toUtf8()), tested.errors);
  }

  void extractionMatchesUnarAndKeepsDamageOut_data() { fixtureRows(); }
  void extractionMatchesUnarAndKeepsDamageOut() {
    QFETCH(QStringList, files);
    QFETCH(QString, open);
    QFETCH(QString, password);
    QFETCH(QStringList, notExtracted);
    QFETCH(bool, extractsWhole);
    QFETCH(QString, extractReason);
    QTemporaryDir work;
    const QString box = boxWith(work, files);
    const QString archive = QFileInfo(openedIn(box, files, open)).fileName();
    QStringList unarArguments = {"-D", "-o", work.filePath("unar")};
    if (!password.isEmpty())
      unarArguments << "-p" << password;
    runIn(box, "unar", unarArguments << archive);

    // The destination lies two levels down, so that a link climbing out
    // of it would still write into the work folder, where it shows.
    const QString destination = work.filePath("out/here");
    const Finished extracted =
        adapter(box, "unrar", {"x", "-o+", "-y", passwordSwitch(password), archive, destination});

    QCOMPARE(treeOf(destination), withoutEntries(treeOf(work.filePath("unar")), notExtracted));
    QCOMPARE(QDir(work.filePath("out")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{"here"});
    QCOMPARE(extracted.exitCode == 0, extractsWhole);
    if (extractsWhole)
      QVERIFY(extracted.errors.isEmpty());
    else
      QVERIFY2(extracted.lastErrorLine().contains(extractReason.toUtf8()), extracted.errors);
  }

  void existingFilesAreKeptOrReplaced_data() {
    QTest::addColumn<bool>("overwrite");
    QTest::newRow("-o- keeps") << false;
    QTest::newRow("-o+ replaces") << true;
  }
  void existingFilesAreKeptOrReplaced() {
    QFETCH(bool, overwrite);
    QTemporaryDir work;
    const QString box = boxWith(work, {"rar5/plain.rar"});
    const QString destination = work.filePath("out");
    QDir().mkpath(destination);
    QFile mine(destination + "/test1.bin");
    QVERIFY(mine.open(QIODevice::WriteOnly));
    mine.write("mine");
    mine.close();
    runIn(box, "unar", {"-D", "-o", work.filePath("unar"), "plain.rar"});

    const Finished extracted = adapter(
        box, "unrar", {"x", overwrite ? "-o+" : "-o-", "-y", "-p{}", "plain.rar", destination});
    QCOMPARE(extracted.exitCode, 0);
    QVERIFY(mine.open(QIODevice::ReadOnly));
    QCOMPARE(mine.readAll() == "mine", !overwrite);
    QCOMPARE(treeOf(destination).size(), treeOf(work.filePath("unar")).size());
  }

  // A link already in the destination where the archive has a folder must
  // not carry the folder's files to the link's target.
  void linksInTheDestinationAreNotFollowed_data() { existingFilesAreKeptOrReplaced_data(); }
  void linksInTheDestinationAreNotFollowed() {
    QFETCH(bool, overwrite);
    QTemporaryDir work;
    const QString box = boxWith(work, {"rar4/folders.rar"});
    const QString destination = work.filePath("out");
    const QString elsewhere = work.filePath("elsewhere");
    QDir().mkpath(destination);
    QDir().mkpath(elsewhere);
    QVERIFY(QFile::link(elsewhere, destination + "/sub"));

    const Finished extracted = adapter(
        box, "unrar", {"x", overwrite ? "-o+" : "-o-", "-y", "-p{}", "folders.rar", destination});
    QVERIFY(QDir(elsewhere).isEmpty());
    QCOMPARE(QFileInfo(destination + "/sub").isSymLink(), !overwrite);
    QCOMPARE(QFileInfo::exists(destination + "/sub/dir1/file1.txt"), overwrite);
    QCOMPARE(extracted.exitCode == 0, overwrite);
  }

  void writingNeedsRarlabsPrograms_data() {
    QTest::addColumn<QString>("program");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("r a") << "r" << QStringList{"a", "basic.rar", "new.txt", "-ep1"};
    QTest::newRow("r d") << "r" << QStringList{"d", "-p{}", "basic.rar", "test.txt"};
    QTest::newRow("r c") << "r" << QStringList{"c", "basic.rar"};
    QTest::newRow("bare r") << "r" << QStringList{};
    QTest::newRow("unrar e") << "unrar" << QStringList{"e", "basic.rar"};
  }
  void writingNeedsRarlabsPrograms() {
    QFETCH(QString, program);
    QFETCH(QStringList, arguments);
    QTemporaryDir work;
    const QString box = boxWith(work, {"rar4/basic.rar"});
    QFile(box + "/new.txt").open(QIODevice::WriteOnly);
    const QStringList before = treeOf(box);
    const Finished refused = adapter(box, program, arguments);
    QCOMPARE(refused.exitCode, 127);
    QVERIFY2(refused.lastErrorLine().startsWith(program.toUtf8() + ": RARLAB's"), refused.errors);
    QCOMPARE(treeOf(box), before);
  }

  // Quillet learns the banner from a bare run and strips it from reports.
  void bareRunShowsTheTestsBanner() {
    QTemporaryDir work;
    const QString box = boxWith(work, {"rar5/plain.rar"});
    const Finished bare = adapter(box, "unrar", {});
    const Finished tested = adapter(box, "unrar", {"t", "plain.rar"});
    QCOMPARE(bare.exitCode, 0);
    QVERIFY(bare.output.contains("\nUsage:"));
    const QByteArray banner = bare.output.split('\n').first();
    QVERIFY(banner.startsWith("UNRAR 4.20 "));
    QCOMPARE(tested.output.split('\n').first(), banner);
  }

  void quilletListsRarArchives() {
    QTemporaryDir work;
    const QString box = boxWith(work, {"rar4/folders.rar", "rar5/encrypted-data.rar"});
    const QString quillet = qEnvironmentVariable("QUILLET_BINARY");

    const Finished listed = runIn(box, quillet, {"--list", box + "/folders.rar"});
    QCOMPARE(listed.exitCode, 0);
    QStringList names;
    for (const QByteArray& line : listed.output.trimmed().split('\n'))
      names << QString::fromUtf8(line.split('\t').first());
    QCOMPARE(names.size(), 10);
    QVERIFY(names.contains("sub/with space/long fn.txt"));
    QVERIFY(names.contains(QString::fromUtf8("sub/üȵĩöḋè/file.txt")));

    const Finished asked = runIn(box, quillet, {"--list", box + "/encrypted-data.rar"});
    QCOMPARE(asked.exitCode, 3);
    const Finished opened =
        runIn(box, quillet, {"--list", "--password", "password", box + "/encrypted-data.rar"});
    QCOMPARE(opened.exitCode, 0);
    QVERIFY(opened.output.startsWith("stest1.txt\t2 KB\t"));
  }
};

QTEST_GUILESS_MAIN(RarFreeTest)
#include "tst_rar_free.moc"
