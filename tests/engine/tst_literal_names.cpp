#include "FakeToolRunner.h"
#include "app/Engine.h"
#include "engine/ArchiveEditing.h"
#include "engine/EntriesModel.h"
#include "engine/Extraction.h"
#include "engine/PasswordPanel.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "support/EngineFixture.h"
#include "support/TestArchives.h"

#include <QApplication>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QMainWindow>
#include <QScopeGuard>
#include <QStatusBar>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <unistd.h>

namespace {

using TestArchives::contentOf;
using TestArchives::Tree;
using TestArchives::treeUnder;
using TestArchives::writeFile;

// The real tools, counted, so that a refusal can be seen to run nothing.
struct CountingRunner : ProcessToolRunner {
  int runs = 0;
  ToolResult run(const ToolRun& run) override {
    ++runs;
    return ProcessToolRunner::run(run);
  }
};

// Names a tool could read as a wildcard, a list file or a switch, names a
// shell or a listing could split, and an ordinary name to compare with.
const QStringList kNames = {"*",   "a*",     "?",           "@list.txt", "!list.txt",
                            "-rf", "--help", "a \"b\" 'c'", "new\nline", "plain.txt"};
// What a wildcard or a list file would take along with the chosen entry.
const QStringList kNeighbours = {"*", "keep1.txt", "keep2.txt", "abc"};
// Beside each archive: what a list file "@list.txt" would name.
const QByteArray kListedNeighbours = "keep1.txt\nkeep2.txt\n";

QByteArray contentFor(const QString& name) {
  return "content of " + name.toUtf8() + '\n';
}

// 7-Zip's listing, and so Quillet's, shows a newline in a name as "_".
QString listed(QString name) {
  return name.replace(u'\n', u'_');
}

// A name the listing cannot show as it is: Quillet refuses to act on it.
bool isListedAltered(const QString& name) {
  return listed(name) != name;
}

template <typename Fixture>
QStringList alertTitles(const Fixture& fx) {
  QStringList titles;
  for (const FakeDialogs::Alert& alert : fx.dialogs.alerts)
    titles << alert.title;
  return titles;
}

// The entries' paths, as 7-Zip lists them, sorted.
QStringList entriesOf(const QString& archive) {
  QStringList names;
  bool pastHeader = false;
  const QByteArray listing = TestArchives::runIn("/", "7z", {"l", "-slt", "-spd", "--", archive});
  for (const QByteArray& line : listing.split('\n')) {
    if (line.startsWith("----------"))
      pastHeader = true;
    else if (pastHeader && line.startsWith("Path = "))
      names << QString::fromUtf8(line.mid(7));
  }
  names.sort();
  return names;
}

// folder/a.TYPE made by 7-Zip from the neighbours and the name, with a list
// file beside it.
QString archiveHolding(const QString& folder, const QString& type, const QString& name) {
  QStringList names = kNeighbours;
  if (!names.contains(name))
    names << name;
  const QString files = folder + "/files";
  for (const QString& entry : names)
    writeFile(files + u'/' + entry, contentFor(entry));
  const QString archive = folder + "/a." + type;
  TestArchives::runIn(files, "7z", QStringList{"a", "-bd", "-spd", "--", archive} + names);
  writeFile(folder + "/list.txt", kListedNeighbours);
  return archive;
}

// folder/a.TYPE holding only "base.txt", made by the type's own tool.
QString archiveToAddTo(const QString& folder, const QString& type) {
  writeFile(folder + "/base.txt", "base\n");
  const QString archive = folder + "/a." + type;
  if (type == "arj")
    TestArchives::runIn(folder, "arj", {"a", archive, "base.txt"});
  else if (type == "lha")
    TestArchives::runIn(folder, "jlha", {"a", archive, "base.txt"});
  else
    TestArchives::runIn(folder, "7z", {"a", "-bd", archive, "base.txt"});
  return archive;
}

// The source folder of an add: the chosen name among same-named files in a
// subfolder and others a wildcard or a list file would match.
QString sourceHolding(const QString& folder, const QString& name) {
  const QString source = folder + "/src";
  for (const QString& file : {name, QString("secret.txt"), QString("abc"), QString("x"),
                              "sub/" + name, QString("sub/secret.txt")})
    writeFile(source + u'/' + file, contentFor(file));
  writeFile(folder + "/list.txt", "secret.txt\n");
  return source;
}

// The entries an add put in, by their path under the source folder: 7-Zip
// stores the file's name, arj and lha its whole path.
QStringList addedUnder(const QString& source, const QStringList& before, QStringList after) {
  for (const QString& old : before) {
    if (!after.removeOne(old))
      return {"lost " + old};
  }
  const QString marker = source.mid(1) + u'/';
  for (QString& entry : after) {
    const qsizetype at = entry.indexOf(marker);
    if (at >= 0)
      entry = entry.mid(at + marker.size());
  }
  return after;
}

void addTypeAndNameRows(const QStringList& types) {
  QTest::addColumn<QString>("type");
  QTest::addColumn<QString>("name");
  for (const QString& type : types) {
    for (const QString& name : kNames)
      QTest::addRow("%s %s", qPrintable(type), qPrintable(listed(name))) << type << name;
  }
}

// A fake-run archive showing the rows name and "keep.txt", name selected.
template <typename Fixture>
void showAndSelect(Fixture& fx, const QString& archive, const QString& name) {
  writeFile(archive, "");
  fx.open(archive);
  fx.engine.ui().oppenedArchiveArrayController->setEntries(
      {ArchiveEntry{name}, ArchiveEntry{"keep.txt"}});
  fx.selectRowsNamed({name});
  fx.runner.runs.clear();
}

QList<QStringList> argumentsOfCommand(const FakeToolRunner& runner, const QString& command) {
  QList<QStringList> found;
  for (const FakeToolRunner::Recorded& run : runner.runs) {
    if (run.arguments.value(0) == command)
      found << run.arguments;
  }
  return found;
}

int selectedRows(EngineFixture<ProcessToolRunner>& fx) {
  return static_cast<int>(
      fx.engine.ui().openedArchiveTableView->selectionModel()->selectedRows().size());
}

}  // namespace

// Names reach the tools as the names they are: a tool acts on the chosen
// entry or file and on nothing else.
class LiteralNamesTest : public QObject {
  Q_OBJECT

 private slots:
  void initTestCase() {
    PreferencesStore::setText(PreferencesStore::kAutoremoveMacosxFolder, "NO");
    for (const char* key : {"openDestinationAfterExtraction", "playSoundWhenDone"})
      PreferencesStore::setText(key, "NO");
  }

  void deletingRemovesOnlyTheSelectedEntry_data() { addTypeAndNameRows({"zip", "7z", "tar"}); }
  void deletingRemovesOnlyTheSelectedEntry() {
    QFETCH(QString, type);
    QFETCH(QString, name);
    QTemporaryDir folder;
    const QString archive = archiveHolding(folder.path(), type, name);
    QStringList expected = entriesOf(archive);
    if (!isListedAltered(name))
      QVERIFY(expected.removeOne(listed(name)));
    EngineFixture<ProcessToolRunner> fx;
    fx.open(archive);
    fx.selectRowsNamed({listed(name)});
    QCOMPARE(selectedRows(fx), 1);
    fx.engine.editing()->btnDeleteSelectedFilesFromArchive();
    QCOMPARE(entriesOf(archive).join(" | "), expected.join(" | "));
    QCOMPARE(alertTitles(fx),
             isListedAltered(name) ? QStringList{"Name not supported"} : QStringList{});
  }

  // Both "new\nline" and "new_line" are listed as "new_line": deleting
  // either row by that name would delete the real "new_line".
  void namesListedAlikeAreNotActedOn() {
    QTemporaryDir folder;
    const QString archive = archiveHolding(folder.path(), "zip", "new\nline");
    writeFile(folder.filePath("new_line"), "real\n");
    TestArchives::runIn(folder.path(), "7z", {"a", "-bd", archive, "new_line"});
    const QStringList before = entriesOf(archive);
    EngineFixture<ProcessToolRunner> fx;
    fx.open(archive);
    fx.selectRowsNamed({"new_line"});
    fx.engine.editing()->btnDeleteSelectedFilesFromArchive();
    QCOMPARE(entriesOf(archive), before);
    QCOMPARE(alertTitles(fx), QStringList{"Name not supported"});
  }

  void extractingASelectedEntryGivesOnlyThatEntry_data() { addTypeAndNameRows({"zip", "7z"}); }
  void extractingASelectedEntryGivesOnlyThatEntry() {
    QFETCH(QString, type);
    QFETCH(QString, name);
    QTemporaryDir folder;
    const QString archive = archiveHolding(folder.path(), type, name);
    QTemporaryDir destination;
    writeFile(destination.filePath("keep1.txt"), "mine\n");
    EngineFixture<ProcessToolRunner> fx;
    fx.open(archive);
    fx.selectRowsNamed({listed(name)});
    QCOMPARE(selectedRows(fx), 1);
    fx.dialogs.openAnswers << QStringList{destination.path()};
    fx.engine.extraction()->btnExtractSelected();
    if (isListedAltered(name))
      QCOMPARE(treeUnder(destination.path()), (Tree{{"keep1.txt", "mine\n"}}));
    else
      QCOMPARE(treeUnder(destination.path()),
               (Tree{{name, contentFor(name)}, {"keep1.txt", "mine\n"}}));
  }

  void addingTakesOnlyTheChosenFile_data() {
    addTypeAndNameRows({"zip", "7z", "tar", "arj", "lha"});
  }
  void addingTakesOnlyTheChosenFile() {
    QFETCH(QString, type);
    QFETCH(QString, name);
    QTemporaryDir folder;
    const QString archive = archiveToAddTo(folder.path(), type);
    const QString source = sourceHolding(folder.path(), name);
    const QStringList before = entriesOf(archive);
    const QByteArray bytes = contentOf(archive);
    EngineFixture<CountingRunner> fx;
    fx.open(archive);
    const int runsBefore = fx.runner.runs;
    fx.engine.editing()->updateArchive({source + u'/' + name}, 1);
    // arj reads "*" and "?" as wildcards whatever it is told.
    if (type == "arj" && (name.contains(u'*') || name.contains(u'?'))) {
      QCOMPARE(fx.dialogs.alerts.size(), 1);
      QCOMPARE(fx.dialogs.alerts[0].title, QString("Name not supported"));
      QCOMPARE(fx.runner.runs, runsBefore);
      QCOMPARE(contentOf(archive), bytes);
      return;
    }
    QVERIFY(fx.dialogs.alerts.isEmpty());
    QCOMPARE(addedUnder(source, before, entriesOf(archive)).join(" | "), listed(name));
  }

  void aNameThatIsNotUtf8AddsNothingElse_data() {
    QTest::addColumn<QString>("type");
    for (const char* type : {"zip", "7z", "tar", "arj", "lha"})
      QTest::newRow(type) << type;
  }
  void aNameThatIsNotUtf8AddsNothingElse() {
    QFETCH(QString, type);
    QTemporaryDir folder;
    const QString archive = archiveToAddTo(folder.path(), type);
    const QString source = sourceHolding(folder.path(), "keep1.txt");
    const QByteArray raw = QFile::encodeName(source) + "/\xff\xfe.txt";
    const int file = ::open(raw.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0644);
    QVERIFY(file >= 0);
    QCOMPARE(::write(file, "raw\n", 4), 4);
    ::close(file);
    // QTemporaryDir cannot remove a name that does not decode.
    const auto removeRaw = qScopeGuard([&raw] { ::unlink(raw.constData()); });
    const QStringList before = entriesOf(archive);
    EngineFixture<ProcessToolRunner> fx;
    fx.open(archive);
    fx.engine.editing()->updateArchive({QFile::decodeName(raw)}, 1);
    const QStringList added = addedUnder(source, before, entriesOf(archive));
    if (added.isEmpty()) {
      QVERIFY(!fx.engine.ui().mainWindow->statusBar()->currentMessage().isEmpty());
    } else {
      QCOMPARE(added.size(), 1);
      QVERIFY2(added[0].endsWith(".txt") && !added[0].contains("keep1") &&
                   !added[0].contains("secret") && !added[0].contains("sub/"),
               qPrintable(added[0]));
    }
  }

  // RARLAB's rar reads "@name" as a list file and expands wildcards with no
  // way to take them literally.
  void rarDeletionRefusesNamesItWouldExpand_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("deletion");
    QTest::newRow("wildcard") << "*" << QStringList{};
    QTest::newRow("question mark") << "a?b" << QStringList{};
    QTest::newRow("list file") << "@x" << QStringList{};
    QTest::newRow("ordinary") << "name" << QStringList{"d", "-p{}", "%A", "name"};
    QTest::newRow("leading dash") << "-dash" << QStringList{"d", "-p{}", "%A", "--", "-dash"};
  }
  void rarDeletionRefusesNamesItWouldExpand() {
    QFETCH(QString, name);
    QFETCH(QStringList, deletion);
    QTemporaryDir folder;
    const QString archive = folder.filePath("x.rar");
    EngineFixture<FakeToolRunner> fx;
    showAndSelect(fx, archive, name);
    fx.engine.editing()->btnDeleteSelectedFilesFromArchive();
    if (deletion.isEmpty()) {
      QVERIFY(fx.runner.runs.isEmpty());
      QCOMPARE(fx.dialogs.alerts.size(), 1);
      QCOMPARE(fx.dialogs.alerts[0].title, QString("Name not supported"));
      QVERIFY(fx.dialogs.alerts[0].message.contains('"' + name + '"'));
      return;
    }
    QVERIFY(fx.dialogs.alerts.isEmpty());
    QCOMPARE(argumentsOfCommand(fx.runner, "d"),
             QList<QStringList>{deletion.replaceInStrings("%A", archive)});
  }

  void sevenZipVectors_data() {
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("delete, ordinary") << "d"
                                      << "name" << QStringList{"d", "-p{}", "%A", "name"};
    QTest::newRow("delete, wildcard") << "d"
                                      << "*" << QStringList{"d", "-spd", "-p{}", "%A", "*"};
    QTest::newRow("delete, switch") << "d"
                                    << "-rf" << QStringList{"d", "-p{}", "--", "%A", "-rf"};
    QTest::newRow("delete, list file")
        << "d"
        << "@x" << QStringList{"d", "-spd", "-p{}", "--", "%A", "@x"};
    QTest::newRow("extract, ordinary")
        << "x"
        << "name" << QStringList{"x", "-pPASS", "%A", "name", "-o%D", "-y"};
    QTest::newRow("extract, wildcard")
        << "x"
        << "*" << QStringList{"x", "-spd", "-pPASS", "%A", "*", "-o%D", "-y"};
    QTest::newRow("extract, switch")
        << "x"
        << "-rf" << QStringList{"x", "-pPASS", "-o%D", "-y", "--", "%A", "-rf"};
    QTest::newRow("extract, list file")
        << "x"
        << "@x" << QStringList{"x", "-spd", "-pPASS", "-o%D", "-y", "--", "%A", "@x"};
    QTest::newRow("add, ordinary") << "a"
                                   << "/home/x/name" << QStringList{"a", "v.zip", "/home/x/name"};
    QTest::newRow("add, wildcard") << "a"
                                   << "/home/x/*" << QStringList{"a", "-spd", "v.zip", "/home/x/*"};
  }
  void sevenZipVectors() {
    QFETCH(QString, command);
    QFETCH(QString, name);
    QFETCH(QStringList, arguments);
    QTemporaryDir folder;
    const QString archive = folder.filePath("v.zip");
    EngineFixture<FakeToolRunner> fx;
    showAndSelect(fx, archive, name);
    fx.engine.enterPasswordDlg()->passwordTextField()->setText("PASS");
    if (command == "d") {
      fx.engine.editing()->btnDeleteSelectedFilesFromArchive();
    } else if (command == "x") {
      fx.dialogs.openAnswers << QStringList{folder.path()};
      fx.engine.extraction()->btnExtractSelected();
    } else {
      fx.engine.editing()->updateArchive({name}, 1);
    }
    arguments.replaceInStrings("%A", archive).replaceInStrings("%D", folder.path());
    QCOMPARE(argumentsOfCommand(fx.runner, command), QList<QStringList>{arguments});
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  LiteralNamesTest test;
  return QTest::qExec(&test, argc, argv);
}
#include "tst_literal_names.moc"
