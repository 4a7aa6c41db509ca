#include "support/TestArchives.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

struct Finished {
  int exitCode;
  QByteArray output;
  QByteArray errors;
};

Finished quillet(const QStringList& arguments, const QString& toolsFolder = QString(),
                 const QString& folder = QString()) {
  QProcess process;
  process.setWorkingDirectory(folder);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.remove("QT_QPA_PLATFORM");
  environment.remove("DISPLAY");
  if (!toolsFolder.isEmpty())
    environment.insert("QUILLET_TOOLS_DIR", toolsFolder);
  process.setProcessEnvironment(environment);
  process.start(qEnvironmentVariable("QUILLET_BINARY"), arguments);
  process.waitForFinished(120000);
  return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
}

}  // namespace

// "quillet --list" as scripts use it: no display, one line per row.
class HeadlessListingTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir work_;

 private slots:
  void initTestCase() {
    TestArchives::writeSampleTree(work_.path(), "tree");
    TestArchives::runIn(work_.path(), "7z", {"a", "-bd", "plain.7z", "tree/a.txt", "tree/big.dat"});
    TestArchives::runIn(work_.path(), "7z",
                        {"a", "-bd", "-pabc", "-mhe=on", "secret.7z", "tree/a.txt"});
    TestArchives::runIn(work_.path(), "tar", {"czf", "packed.tgz", "tree"});
  }

  void printsOneTabbedLinePerRow() {
    const Finished run = quillet({"--list", work_.filePath("plain.7z")});
    QCOMPARE(run.exitCode, 0);
    const QList<QByteArray> lines = run.output.trimmed().split('\n');
    QCOMPARE(lines.size(), 2);
    const QList<QByteArray> fields = lines[0].split('\t');
    QCOMPARE(fields.size(), 5);
    QCOMPARE(fields[0], QByteArray("tree/a.txt"));
    QCOMPARE(fields[1], QByteArray("6 B"));
    QCOMPARE(fields[3], TestArchives::crcOfFile(work_.filePath("tree/a.txt")).toUtf8());
    QCOMPARE(lines[1].split('\t').value(1), QByteArray("1 KB"));
  }

  void protectedArchivesNeedAPassword() {
    const Finished asked = quillet({"--list", work_.filePath("secret.7z")});
    QCOMPARE(asked.exitCode, 3);
    QVERIFY(asked.output.isEmpty());
    QVERIFY(asked.errors.contains("password"));

    const Finished listed = quillet({"--list", "--password", "abc", work_.filePath("secret.7z")});
    QCOMPARE(listed.exitCode, 0);
    QVERIFY(listed.output.startsWith("tree/a.txt\t6 B\t"));
  }

  void typesThatListNothingPrintNothing() {
    const Finished run = quillet({"--list", work_.filePath("packed.tgz")});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.isEmpty());
  }

  // Opening changes folder before the tools run: a relative path once
  // printed nothing and exited 0.
  void aRelativePathIsResolvedFirst() {
    const Finished run = quillet({"--list", "plain.7z"}, QString(), work_.path());
    QCOMPARE(run.exitCode, 0);
    QCOMPARE(run.output.count('\n'), 2);
  }

  void aMissingOrUnreadableArchiveExitsWithTwo_data() {
    QTest::addColumn<QString>("path");
    QTest::newRow("missing") << "nothing-here.zip";
    QTest::newRow("a folder") << "tree";
  }
  void aMissingOrUnreadableArchiveExitsWithTwo() {
    QFETCH(QString, path);
    const Finished run = quillet({"--list", path}, QString(), work_.path());
    QCOMPARE(run.exitCode, 2);
    QVERIFY(run.output.isEmpty());
    QVERIFY(run.errors.startsWith(path.toUtf8() + ": "));
  }

  void aMissingToolExitsWithFour() {
    QTemporaryDir emptyTools;
    const Finished run = quillet({"--list", work_.filePath("plain.7z")}, emptyTools.path());
    QCOMPARE(run.exitCode, 4);
    QVERIFY(run.output.isEmpty());
    QVERIFY(run.errors.contains("7za"));
  }

  void helpDescribesTheListing() {
    const Finished run = quillet({"--help"});
    QCOMPARE(run.exitCode, 0);
    QVERIFY(run.output.contains("--list"));
    QVERIFY(run.output.contains("--password"));
  }
};

QTEST_GUILESS_MAIN(HeadlessListingTest)
#include "tst_headless_listing.moc"
