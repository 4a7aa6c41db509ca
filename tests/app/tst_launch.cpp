#include "support/TestArchives.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSettings>
#include <QTemporaryDir>
#include <QTest>

namespace {

using TestArchives::contentOf;
using TestArchives::Tree;
using TestArchives::treeUnder;
using TestArchives::writeFile;

// A home of its own, with settings given beforehand, for one run of
// "quillet FILE..." as a file manager would start it.
class Home {
 public:
  Home() {
    QDir().mkpath(path("config/Quillet"));
    QDir().mkpath(path("Desktop"));
  }
  QString path(const QString& relative) const { return home_.filePath(relative); }
  QString settingsFile() const { return path("config/Quillet/Quillet.conf"); }

  void preset(const QMap<QString, QString>& values) const {
    QSettings settings(settingsFile(), QSettings::IniFormat);
    for (auto [key, value] : values.asKeyValueRange())
      settings.setValue(key, value);
  }
  QStringList keys() const { return QSettings(settingsFile(), QSettings::IniFormat).allKeys(); }
  QString value(const QString& key) const {
    return QSettings(settingsFile(), QSettings::IniFormat).value(key).toString();
  }

  // Runs quillet with the files and waits until it quits by itself.
  int launch(const QStringList& files, const QString& toolsFolder = QString()) const {
    QProcess quillet;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("HOME", home_.path());
    environment.insert("XDG_CONFIG_HOME", path("config"));
    environment.insert("XDG_DATA_HOME", path("data"));
    environment.insert("QT_QPA_PLATFORM", "offscreen");
    if (!toolsFolder.isEmpty())
      environment.insert("QUILLET_TOOLS_DIR", toolsFolder);
    quillet.setProcessEnvironment(environment);
    quillet.start(qEnvironmentVariable("QUILLET_BINARY"), files);
    if (!quillet.waitForFinished(60000)) {
      quillet.kill();
      return -1;
    }
    return quillet.exitCode();
  }

 private:
  QTemporaryDir home_;
};

// Tools that only write their arguments down, one run per line, so that
// the exact vectors can be read back.
class RecordingTools {
 public:
  RecordingTools() {
    for (const char* tool : {"7za", "unrar", "r", "arj", "lha"}) {
      const QString script = tools_.filePath(QString::fromLatin1(tool));
      writeFile(script, "#!/bin/sh\nprintf '%s' \"$(basename \"$0\")\" >>\"" +
                            QFile::encodeName(log()) +
                            "\"\nfor a in \"$@\"; do printf ' [%s]' \"$a\" >>\"" +
                            QFile::encodeName(log()) + "\"; done\necho >>\"" +
                            QFile::encodeName(log()) + "\"\n");
      QFile::setPermissions(script, QFile::permissions(script) | QFile::ExeOwner);
    }
  }
  QString folder() const { return tools_.path(); }
  QString log() const { return tools_.filePath("runs.log"); }
  QStringList runs() const {
    return QString::fromUtf8(contentOf(log())).split(u'\n', Qt::SkipEmptyParts);
  }

 private:
  QTemporaryDir tools_;
};

}  // namespace

// "quillet FILE..." as a file manager starts it: the files are handled and
// Quillet quits by itself.
class LaunchTest : public QObject {
  Q_OBJECT

 private slots:
  void anArchiveIsExtractedBesideItself() {
    Home home;
    QDir().mkpath(home.path("work/src"));
    writeFile(home.path("work/src/a.txt"), "alpha\n");
    TestArchives::runIn(home.path("work/src"), "7z", {"a", "-bd", "../photos.zip", "a.txt"});
    QCOMPARE(home.launch({home.path("work/photos.zip")}), 0);
    QCOMPARE(contentOf(home.path("work/a.txt")), QByteArray("alpha\n"));
  }

  // A name the tool could take for a switch, a pattern or a list file is
  // still the one archive.
  void anArchiveWithAHostileNameIsTakenLiterally() {
    Home home;
    QDir().mkpath(home.path("work/src"));
    writeFile(home.path("work/src/a.txt"), "alpha\n");
    writeFile(home.path("work/src/b.txt"), "beta\n");
    TestArchives::runIn(home.path("work/src"), "7z", {"a", "-bd", "../-x *.zip", "a.txt"});
    TestArchives::runIn(home.path("work/src"), "7z", {"a", "-bd", "../other.zip", "b.txt"});
    QCOMPARE(home.launch({home.path("work/-x *.zip")}), 0);
    QCOMPARE(contentOf(home.path("work/a.txt")), QByteArray("alpha\n"));
    QVERIFY(!QFile::exists(home.path("work/b.txt")));
  }

  // Without a display nobody can answer the panel, the password dialog or
  // the save panel: Quillet says so and quits, having written nothing.
  void withoutADisplayUnanswerableRoutesEnd_data() {
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("preference");
    QTest::newRow("protected zip") << "locked.zip"
                                   << "";
    QTest::newRow("quick-extract panel") << "plain.zip"
                                         << "enableCustomContextMenu";
    QTest::newRow("save panel") << "src/a.txt"
                                << "";
  }
  void withoutADisplayUnanswerableRoutesEnd() {
    QFETCH(QString, file);
    QFETCH(QString, preference);
    Home home;
    if (!preference.isEmpty())
      home.preset({{preference, "YES"}});
    QDir().mkpath(home.path("work/src"));
    writeFile(home.path("work/src/a.txt"), "alpha\n");
    TestArchives::runIn(home.path("work/src"), "7z",
                        {"a", "-bd", "-psecret", "-mem=AES256", "../locked.zip", "a.txt"});
    TestArchives::runIn(home.path("work/src"), "7z", {"a", "-bd", "../plain.zip", "a.txt"});
    const QStringList before = QDir(home.path("work")).entryList(QDir::Files);
    QCOMPARE(home.launch({home.path("work/" + file)}), 0);
    QCOMPARE(QDir(home.path("work")).entryList(QDir::Files), before);
    QVERIFY(QDir(home.path("Desktop")).isEmpty());
  }

  // With the surrounding folder on, a zip (passed by its full path) lands in
  // it, while a tgz (passed by its bare name) is not found from there.
  void theSurroundingFolderSetting_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("extracted");
    QTest::newRow("zip") << "x.zip"
                         << "x" << true;
    QTest::newRow("tgz") << "y.tgz"
                         << "y" << false;
  }
  void theSurroundingFolderSetting() {
    QFETCH(QString, archive);
    QFETCH(QString, folder);
    QFETCH(bool, extracted);
    Home home;
    home.preset({{"CreateSurroundingFolderBeforeExtraction", "YES"}});
    QDir().mkpath(home.path("work/src"));
    writeFile(home.path("work/src/a.txt"), "alpha\n");
    if (archive.endsWith(".zip"))
      TestArchives::runIn(home.path("work/src"), "7z", {"a", "-bd", "../" + archive, "a.txt"});
    else
      TestArchives::runIn(home.path("work/src"), "tar", {"czf", "../" + archive, "a.txt"});
    QCOMPARE(home.launch({home.path("work/" + archive)}), 0);
    QVERIFY(QFileInfo(home.path("work/" + folder)).isDir());
    QCOMPARE(QFile::exists(home.path("work/" + folder + "/a.txt")), extracted);
    QVERIFY(!QFile::exists(home.path("work/a.txt")));
  }

  void otherFilesArePackedIntoOneArchive() {
    Home home;
    home.preset({{"onDropCompressionMethod", "7z"},
                 {"onDropCompressionLevel", "4"},
                 {"prefUseFisrstNameOfTheArrayAsArchiveName", "YES"}});
    writeFile(home.path("work/notes.txt"), "notes\n");
    writeFile(home.path("work/photos.zip"), "not really a zip\n");
    QCOMPARE(home.launch({home.path("work/notes.txt"), home.path("work/photos.zip")}), 0);
    const QString archive = home.path("work/notes.txt.7z");
    QVERIFY(QFile::exists(archive));
    QDir().mkpath(home.path("out"));
    TestArchives::runIn(home.path("out"), "7z", {"x", archive});
    QCOMPARE(treeUnder(home.path("out")),
             (Tree{{"notes.txt", "notes\n"}, {"photos.zip", "not really a zip\n"}}));
  }

  void theFirstLaunchWritesOnlyTheOnDropKeys() {
    Home home;
    RecordingTools tools;
    writeFile(home.path("work/a.zip"), "");
    QCOMPARE(home.launch({home.path("work/a.zip")}, tools.folder()), 0);
    QCOMPARE(home.keys(), (QStringList{"onDropCompressionLevel", "onDropCompressionMethod"}));
    QCOMPARE(home.value("onDropCompressionMethod"), QString("ZIP"));
    QCOMPARE(home.value("onDropCompressionLevel"), QString("2"));
  }

  // The vectors by the file's own extension, in the archive's folder.
  void extractionVectors_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("overwrite");
    QTest::addColumn<QString>("run");
    QTest::newRow("zip") << "a.zip"
                         << "NO"
                         << "7za [x] [%F/a.zip] [-ssc] [-aos] [-y]";
    QTest::newRow("7z, overwriting") << "a.7z"
                                     << "YES"
                                     << "7za [x] [%F/a.7z] [-ssc] [-aoa] [-y]";
    QTest::newRow("rar") << "a.rar"
                         << "NO"
                         << "unrar [x] [-o-] [-y] [%F/a.rar]";
    QTest::newRow("arj") << "a.arj"
                         << "NO"
                         << "arj [x] [-y] [%F/a.arj]";
    QTest::newRow("lha") << "a.lha"
                         << "YES"
                         << "lha [x] [-f] [%F/a.lha]";
    QTest::newRow("tgz, by its bare name") << "a.tgz"
                                           << "NO"
                                           << "7za [x] [a.tgz] [-ssc] [-aos] [-y]";
  }
  void extractionVectors() {
    QFETCH(QString, archive);
    QFETCH(QString, overwrite);
    QFETCH(QString, run);
    Home home;
    RecordingTools tools;
    home.preset({{"overwriteOnExtraction", overwrite}});
    writeFile(home.path("work/" + archive), "");
    QCOMPARE(home.launch({home.path("work/" + archive)}, tools.folder()), 0);
    QVERIFY(tools.runs().contains(run.replace("%F", home.path("work"))));
  }
};

QTEST_GUILESS_MAIN(LaunchTest)
#include "tst_launch.moc"
