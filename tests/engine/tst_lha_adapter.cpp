#include "support/TestArchives.h"

#include <QDir>
#include <QProcess>
#include <QRandomGenerator>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>
#include <csignal>

#include <memory>

using TestArchives::contentOf;
using TestArchives::writeFile;

namespace {

const QByteArray kUserBak = "the user's own notes\n";

struct Outcome {
  int exitCode = -1;
  QByteArray errors;
};

QByteArray randomBytes(qsizetype size) {
  QList<quint32> words(size / qsizetype(sizeof(quint32)));
  QRandomGenerator::global()->fillRange(words.data(), words.size());
  return QByteArray(reinterpret_cast<const char*>(words.constData()), size);
}

QStringList namesIn(const QString& folder) {
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

// The names lhasa lists, read from the column under the last dashes.
QStringList entriesOf(const QString& archive) {
  const QList<QByteArray> lines =
      TestArchives::runIn(QFileInfo(archive).absolutePath(), "lhasa", {"l", archive}).split('\n');
  QStringList entries;
  qsizetype column = -1;
  for (const QByteArray& line : lines) {
    if (line.startsWith("----------")) {
      if (column >= 0)
        break;
      column = line.lastIndexOf(' ') + 1;
    } else if (column >= 0) {
      entries << QString::fromUtf8(line.mid(column));
    }
  }
  return entries;
}

bool mountTmpfs(const QString& folder) {
  return QProcess::execute("mount", {"-t", "tmpfs", "-o", "size=256k", "tmpfs", folder}) == 0;
}

}  // namespace

// The lha adapter writes through jlha, which backs the archive up as NAME.bak
// and rewrites it in place; these runs check the files left on disk.
class LhaAdapterTest : public QObject {
  Q_OBJECT

 private:
  std::unique_ptr<QTemporaryDir> root_;
  QByteArray archiveOfA_;

  QString path(const QString& relative) const { return root_->filePath(relative); }

  // Each run gets its own TMPDIR, so that anything left there shows.
  void start(QProcess& process, const QString& folder, const QStringList& arguments) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("LC_ALL", "C.UTF-8");
    environment.insert("TMPDIR", path("tmp"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(qEnvironmentVariable("QUILLET_TOOLS_DIR") + "/lha", arguments);
  }

  Outcome run(const QString& folder, const QStringList& arguments) const {
    QProcess process;
    start(process, folder, arguments);
    if (!process.waitForFinished(120000) || process.exitStatus() != QProcess::NormalExit)
      return {};
    return {process.exitCode(), process.readAllStandardError()};
  }

 private slots:
  void initTestCase() {
    QTemporaryDir folder;
    writeFile(folder.filePath("a.txt"), "alpha\n");
    TestArchives::runIn(folder.path(), "jlha", {"a", "a.lha", "a.txt"});
    archiveOfA_ = contentOf(folder.filePath("a.lha"));
    QVERIFY(!archiveOfA_.isEmpty());
  }

  void init() {
    root_ = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir().mkpath(path("tmp")));
    QVERIFY(QDir().mkpath(path("box")));
  }

  void writingLeavesOnlyTheArchive_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QStringList>("existing");
    QTest::addColumn<QString>("userBak");
    QTest::addColumn<QList<QStringList>>("runs");
    QTest::addColumn<QStringList>("entries");
    QTest::addColumn<QStringList>("left");

    const QStringList inputs = {"a.txt", "b.txt"};
    QTest::newRow("adding beside notes.bak")
        << "notes.lha" << QStringList{"a.txt"} << "notes.bak"
        << QList<QStringList>{{"a", "-o5", "notes.lha", "b.txt"}} << inputs
        << QStringList{"a.txt", "b.txt", "notes.bak", "notes.lha"};
    QTest::newRow("updating beside notes.bak")
        << "notes.lha" << QStringList{"a.txt"} << "notes.bak"
        << QList<QStringList>{{"u", "notes.lha", "b.txt"}} << inputs
        << QStringList{"a.txt", "b.txt", "notes.bak", "notes.lha"};
    QTest::newRow("deleting beside notes.bak")
        << "notes.lha" << inputs << "notes.bak" << QList<QStringList>{{"d", "notes.lha", "a.txt"}}
        << QStringList{"b.txt"} << QStringList{"a.txt", "b.txt", "notes.bak", "notes.lha"};
    QTest::newRow("moving beside notes.bak")
        << "notes.lha" << QStringList{"a.txt"} << "notes.bak"
        << QList<QStringList>{{"m", "notes.lha", "b.txt"}} << inputs
        << QStringList{"a.txt", "notes.bak", "notes.lha"};

    // Quillet makes an archive of several items one run per item.
    const QList<QStringList> twoRuns = {{"a", "-o5", "untitled.lha", "%I/item1"},
                                        {"a", "-o5", "untitled.lha", "%I/item2"}};
    const QStringList items = {"%I/item1/", "%I/item1/f.txt", "%I/item2"};
    QTest::newRow("creating in two runs") << "untitled.lha" << QStringList{} << "" << twoRuns
                                          << items << QStringList{"a.txt", "b.txt", "untitled.lha"};
    QTest::newRow("creating in two runs beside untitled.bak")
        << "untitled.lha" << QStringList{} << "untitled.bak" << twoRuns << items
        << QStringList{"a.txt", "b.txt", "untitled.bak", "untitled.lha"};
  }

  void writingLeavesOnlyTheArchive() {
    QFETCH(QString, archive);
    QFETCH(QStringList, existing);
    QFETCH(QString, userBak);
    QFETCH(QList<QStringList>, runs);
    QFETCH(QStringList, entries);
    QFETCH(QStringList, left);

    const QString box = path("box");
    writeFile(box + "/a.txt", "alpha\n");
    writeFile(box + "/b.txt", "beta\n");
    writeFile(path("items/item1/f.txt"), "one\n");
    writeFile(path("items/item2"), "two\n");
    if (!existing.isEmpty())
      TestArchives::runIn(box, "jlha", QStringList{"a", archive} + existing);
    if (!userBak.isEmpty())
      writeFile(box + u'/' + userBak, kUserBak);

    for (QStringList arguments : runs) {
      const Outcome outcome = run(box, arguments.replaceInStrings("%I", path("items")));
      QVERIFY2(outcome.exitCode == 0, outcome.errors.constData());
    }

    QCOMPARE(entriesOf(box + u'/' + archive), entries.replaceInStrings("%I", path("items")));
    QCOMPARE(namesIn(box), left);
    if (!userBak.isEmpty())
      QCOMPARE(contentOf(box + u'/' + userBak), kUserBak);
    QCOMPARE(namesIn(path("tmp")), QStringList());
  }

  void killedRunKeepsTheArchive_data() {
    QTest::addColumn<int>("signalNumber");
    QTest::addColumn<bool>("wholeGroup");
    QTest::addColumn<bool>("cleaned");

    QTest::newRow("SIGTERM") << SIGTERM << false << true;
    QTest::newRow("SIGKILL") << SIGKILL << false << true;
    QTest::newRow("SIGTERM to the group") << SIGTERM << true << true;
    // Nothing survives to clean up, but the archive is still untouched.
    QTest::newRow("SIGKILL to the group") << SIGKILL << true << false;
  }

  void killedRunKeepsTheArchive() {
    QFETCH(int, signalNumber);
    QFETCH(bool, wholeGroup);
    QFETCH(bool, cleaned);

    const QString box = path("box");
    writeFile(box + "/notes.lha", archiveOfA_);
    writeFile(box + "/notes.bak", kUserBak);
    // Random bytes keep jlha busy for seconds.
    writeFile(path("big.bin"), randomBytes(32 << 20));

    QProcess process;
    process.setChildProcessModifier([] { ::setpgid(0, 0); });
    start(process, box, {"a", "-o5", "notes.lha", path("big.bin")});
    // jlha names a file as it starts compressing it.
    QVERIFY(process.waitForReadyRead(60000));
    const pid_t pid = static_cast<pid_t>(process.processId());
    QCOMPARE(::kill(wholeGroup ? -pid : pid, signalNumber), 0);
    QVERIFY(process.waitForFinished(30000));

    if (cleaned) {
      QTRY_COMPARE_WITH_TIMEOUT(namesIn(box), (QStringList{"notes.bak", "notes.lha"}), 15000);
      QTRY_COMPARE_WITH_TIMEOUT(namesIn(path("tmp")), QStringList(), 15000);
    }
    QCOMPARE(contentOf(box + "/notes.lha"), archiveOfA_);
    QCOMPARE(contentOf(box + "/notes.bak"), kUserBak);
  }

  void failingRunSaysWhy_data() {
    QTest::addColumn<QString>("mount");
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("reason");

    const QString missing = "Cannot access \"missing.txt\"";
    QTest::newRow("missing input, new archive")
        << "" << QByteArray() << QStringList{"a", "-o5", "box/notes.lha", "missing.txt"} << missing;
    QTest::newRow("missing input among others")
        << "" << archiveOfA_ << QStringList{"a", "-o5", "box/notes.lha", "b.txt", "missing.txt"}
        << missing;
    // jlha deletes what it moved even though the run fails.
    QTest::newRow("moving with a missing input")
        << "" << archiveOfA_ << QStringList{"m", "box/notes.lha", "b.txt", "missing.txt"}
        << missing;
    // jlha would start a new archive over it.
    QTest::newRow("not an LHA archive")
        << "" << QByteArray("a note, not an archive\n")
        << QStringList{"a", "box/notes.lha", "b.txt"} << "not an LHA archive";
    QTest::newRow("full disk") << "tmpfs" << archiveOfA_
                               << QStringList{"a", "-o5", "box/notes.lha", "big.bin"}
                               << "No space left on device";
    QTest::newRow("read-only folder")
        << "read-only" << archiveOfA_ << QStringList{"a", "box/notes.lha", "b.txt"}
        << "Read-only file system";
  }

  void failingRunSaysWhy() {
    QFETCH(QString, mount);
    QFETCH(QByteArray, before);
    QFETCH(QStringList, arguments);
    QFETCH(QString, reason);

    const QString box = path("box");
    writeFile(path("b.txt"), "beta\n");
    writeFile(path("big.bin"), randomBytes(1 << 20));
    if (!mount.isEmpty() && !mountTmpfs(box))
      QSKIP("mounting a tmpfs is not permitted here");
    const auto unmount = qScopeGuard([&] {
      if (!mount.isEmpty())
        QProcess::execute("umount", {"-l", box});
    });
    if (!before.isEmpty())
      writeFile(box + "/notes.lha", before);
    if (mount == "read-only")
      QCOMPARE(QProcess::execute("mount", {"-o", "remount,ro", box}), 0);

    const Outcome outcome = run(root_->path(), arguments);

    QVERIFY2(outcome.exitCode > 0 && outcome.exitCode != 127, outcome.errors.constData());
    const QByteArray last = outcome.errors.trimmed().split('\n').constLast();
    QVERIFY2(last.startsWith("lha: ") && last.contains(reason.toUtf8()), last.constData());
    QVERIFY2(!outcome.errors.contains("\tat ") && !outcome.errors.contains("Exception"),
             outcome.errors.constData());
    QCOMPARE(namesIn(box), before.isEmpty() ? QStringList() : QStringList{"notes.lha"});
    if (!before.isEmpty())
      QCOMPARE(contentOf(box + "/notes.lha"), before);
    QCOMPARE(namesIn(root_->path()), (QStringList{"b.txt", "big.bin", "box", "tmp"}));
    QCOMPARE(namesIn(path("tmp")), QStringList());
  }
};

QTEST_GUILESS_MAIN(LhaAdapterTest)
#include "tst_lha_adapter.moc"
