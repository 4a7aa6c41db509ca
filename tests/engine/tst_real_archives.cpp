#include "engine/ArchiveOpener.h"
#include "engine/OpeningWindow.h"
#include "engine/SizeText.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/TestArchives.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

namespace {

class ListingWindow : public OpeningWindow {
 public:
  bool passwordPanelVisible() const override { return panelVisible; }
  void showPasswordPanel() override { panelVisible = true; }
  void hidePasswordPanel() override { panelVisible = false; }
  void showRows(const ArchiveEntries& shown) override { rows = shown; }
  void reportProblem(const ToolProblem& problem) override { problems << problem.message; }

  bool panelVisible = false;
  ArchiveEntries rows;
  QStringList problems;
};

const ArchiveEntry* rowNamed(const ArchiveEntries& rows, const QString& name) {
  const auto found = std::find_if(rows.cbegin(), rows.cend(),
                                  [&](const ArchiveEntry& row) { return row.name == name; });
  return found == rows.cend() ? nullptr : &*found;
}

}  // namespace

// Archives made by the installed tools, opened and listed as the window does.
class RealArchivesTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;
  QStringList files_;
  QStringList folders_ = {"tree", "tree/dir one", "tree/dir one/sub"};

  QString make(const QString& archive, const QString& program, const QStringList& arguments) {
    return TestArchives::makeArchive(work_.path(), archive, program, arguments);
  }

  ListingWindow open(const QString& path, const QString& password = QString()) {
    ProcessToolRunner runner;
    NoEntryIcons icons;
    ListingWindow window;
    ArchiveOpener opener(runner, icons, window);
    opener.open(path);
    if (!password.isNull()) {
      if (!window.panelVisible)
        qWarning("no password was asked for");
      opener.passwordEntered(password);
    }
    return window;
  }

  void verifyFileRows(const ArchiveEntries& rows, bool withCrc, const QString& prefix) {
    for (const QString& file : files_) {
      const QString name = prefix.isNull() ? file : QFileInfo(file).fileName();
      const ArchiveEntry* row = rowNamed(rows, name);
      QVERIFY2(row, qPrintable(name));
      const QString source = work_.filePath(file);
      QCOMPARE(row->originalSize, SizeText::listing(static_cast<int>(QFileInfo(source).size())));
      if (withCrc && QFileInfo(source).size() > 0)
        QCOMPARE(row->crc32, TestArchives::crcOfFile(source));
    }
  }

 private slots:
  void initTestCase() {
    QVERIFY(work_.isValid());
    files_ = TestArchives::writeSampleTree(work_.path(), "tree");
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO");
  }

  void sevenZipFormats_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<bool>("withCrc");
    QTest::newRow("zip") << "t.zip" << QStringList{"a", "-bd", "%A", "tree"} << true;
    QTest::newRow("7z") << "t.7z" << QStringList{"a", "-bd", "%A", "tree"} << true;
    QTest::newRow("7z with creation and access times")
        << "tca.7z" << QStringList{"a", "-bd", "-mtc=on", "-mta=on", "%A", "tree"} << true;
    QTest::newRow("7z, not solid")
        << "ns.7z" << QStringList{"a", "-bd", "-ms=off", "%A", "tree"} << true;
  }
  void sevenZipFormats() {
    QFETCH(QString, archive);
    QFETCH(QStringList, arguments);
    QFETCH(bool, withCrc);
    const ListingWindow window = open(make(archive, "7z", arguments));
    QVERIFY2(window.problems.isEmpty(), qPrintable(window.problems.join('\n')));
    QStringList all = files_ + folders_;
    all.sort();
    QCOMPARE(TestArchives::sortedNamesOf(window.rows), all);
    verifyFileRows(window.rows, withCrc, QString());
    static const QRegularExpression date(R"(^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d(\.\d+)?$)");
    for (const ArchiveEntry& row : window.rows)
      QVERIFY2(date.match(row.dateModified).hasMatch(), qPrintable(row.dateModified));
  }

  void tar() {
    const ListingWindow window = open(make("t.tar", "tar", {"cf", "%A", "tree"}));
    QStringList all = files_ + folders_;
    all.sort();
    QCOMPARE(TestArchives::sortedNamesOf(window.rows), all);
    verifyFileRows(window.rows, false, QString());
    for (const ArchiveEntry& row : window.rows)
      QCOMPARE(row.crc32, QString("---"));
  }

  void arj() {
    const ListingWindow window = open(make("t.arj", "arj", {"a", "-r", "%A", "tree"}));
    QVERIFY2(window.problems.isEmpty(), qPrintable(window.problems.join('\n')));
    // arj's plain listing names each file without its folder.
    QStringList names;
    for (const QString& file : files_)
      names << QFileInfo(file).fileName();
    names.sort();
    QCOMPARE(TestArchives::sortedNamesOf(window.rows), names);
    verifyFileRows(window.rows, false, "base names");
  }

  void lha() {
    const ListingWindow window = open(make("t.lha", "jlha", {"a", "%A", "tree"}));
    QVERIFY2(window.problems.isEmpty(), qPrintable(window.problems.join('\n')));
    // lhasa prints each byte outside ASCII of a Latin-1 name as "?".
    QStringList names = {"tree", "dir one", "sub"};
    for (const QString& file : files_)
      names << QFileInfo(file).fileName().replace(QRegularExpression("[^\\x00-\\x7f]"), "?");
    names.sort();
    QCOMPARE(TestArchives::sortedNamesOf(window.rows), names);
    const ArchiveEntry* bin = rowNamed(window.rows, "b.bin");
    QVERIFY(bin);
    QCOMPARE(bin->originalSize, QString("4 KB"));
    QVERIFY(QRegularExpression("^[0-9a-f]{4}$").match(bin->crc32).hasMatch());
  }

  void passwordsOpenProtectedArchives_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("zip") << "p.zip" << QStringList{"a", "-bd", "-pabc", "%A", "tree"};
    QTest::newRow("7z") << "p.7z" << QStringList{"a", "-bd", "-pabc", "%A", "tree"};
    QTest::newRow("7z, encrypted headers")
        << "ph.7z" << QStringList{"a", "-bd", "-pabc", "-mhe=on", "%A", "tree"};
  }
  void passwordsOpenProtectedArchives() {
    QFETCH(QString, archive);
    QFETCH(QStringList, arguments);
    const QString path = make(archive, "7z", arguments);
    ListingWindow asked = open(path);
    QVERIFY(asked.panelVisible);
    QVERIFY(asked.rows.isEmpty());
    const ListingWindow listed = open(path, "abc");
    QCOMPARE(listed.rows.size(), files_.size() + folders_.size());
    verifyFileRows(listed.rows, true, QString());
  }

  void aDamagedArchiveListsWhatItCanAndSaysWhy() {
    const QString path = make("damaged.7z", "7z", {"a", "-bd", "%A", "tree"});
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.resize(40));
    file.close();
    const ListingWindow window = open(path);
    QVERIFY(window.rows.isEmpty());
    QCOMPARE(window.problems.size(), 1);
    QVERIFY2(window.problems[0].startsWith("7za l failed"), qPrintable(window.problems[0]));
  }
};

QTEST_GUILESS_MAIN(RealArchivesTest)
#include "tst_real_archives.moc"
