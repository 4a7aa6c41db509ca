#include "support/TestArchives.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QRegularExpression>
#include <QStringEncoder>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

struct Finished {
  int exitCode;
  QString output;
  QString errors;
};

QByteArray contentOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void writeFile(const QString& path, const QByteArray& content) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(content);
}

// Every file and folder under root, relative, with each file's content.
QMap<QString, QByteArray> snapshot(const QString& root) {
  QMap<QString, QByteArray> entries;
  QDirIterator it(root, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden,
                  QDirIterator::Subdirectories);
  while (it.hasNext()) {
    const QString path = it.next();
    entries.insert(QDir(root).relativeFilePath(path), contentOf(path));
  }
  return entries;
}

// As a file manager or a terminal without a display would start it.
QProcessEnvironment withoutDisplay() {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
    environment.remove(name);
  return environment;
}

Finished run(const QString& program, const QStringList& arguments,
             const QProcessEnvironment& environment = withoutDisplay()) {
  QProcess process;
  process.setProcessEnvironment(environment);
  process.setWorkingDirectory(QDir::rootPath());
  process.setStandardInputFile(QProcess::nullDevice());
  process.start(program, arguments);
  process.waitForFinished(120000);
  return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
          QString::fromUtf8(process.readAllStandardError())};
}

}  // namespace

// The stub bundle Quillet puts around a self-extracting archive, run without
// a display the way a script or a terminal would.
class SfxModuleTest : public QObject {
  Q_OBJECT

 private:
  QTemporaryDir sources_;
  std::vector<std::unique_ptr<QTemporaryDir>> places_;

  static QString builtBundle() {
    return QDir(qEnvironmentVariable("QUILLET_TOOLS_DIR")).absoluteFilePath("../sfxmodule.app");
  }

  // A fresh folder holding "My Files.app" with the archive and notes inside.
  QString bundleWith(const QString& archiveName, const QByteArray& notes = {}) {
    places_.push_back(std::make_unique<QTemporaryDir>());
    const QString bundle = places_.back()->filePath("My Files.app");
    TestArchives::runIn(places_.back()->path(), "cp", {"-a", builtBundle(), bundle});
    QFile::copy(sources_.filePath(archiveName), bundle + "/Contents/Resources/archive");
    writeFile(bundle + "/Contents/Resources/notes.txt", notes);
    return bundle;
  }

  static QString folderOf(const QString& bundle) { return QFileInfo(bundle).absolutePath(); }

  static Finished runStub(const QString& bundle, const QStringList& arguments = {}) {
    return run(bundle + "/Contents/MacOS/sfxmodule", arguments);
  }

  static QMap<QString, QByteArray> treeIn(const QString& folder) {
    return snapshot(folder + "/tree");
  }

  QMap<QString, QByteArray> originalTree() const { return treeIn(sources_.path()); }

  // 7z renames the extracted a.txt when the folder already holds one.
  QMap<QString, QByteArray> originalTreeBesideOwnFile() const {
    QMap<QString, QByteArray> tree = originalTree();
    tree["a_1.txt"] = tree["a.txt"];
    tree["a.txt"] = "mine";
    return tree;
  }

 private slots:
  void initTestCase() {
    QVERIFY(QFileInfo(builtBundle() + "/Contents/MacOS/sfxmodule").isExecutable());
    TestArchives::writeSampleTree(sources_.path(), "tree");
    const QString here = sources_.path();
    TestArchives::runIn(here, "7z", {"a", "-bd", "plain.7z", "tree"});
    TestArchives::runIn(here, "7z", {"a", "-bd", "-tzip", "plain.zip", "tree"});
    TestArchives::runIn(here, "7z", {"a", "-bd", "-psecret", "-mhe=on", "headers.7z", "tree"});
    TestArchives::runIn(here, "7z", {"a", "-bd", "-psecret", "data.7z", "tree"});
    TestArchives::runIn(here, "7z", {"a", "-bd", "-tzip", "-psecret", "secret.zip", "tree"});
  }

  void extractsBesideTheBundle_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<bool>("ownFileThere");
    QTest::newRow("7z") << "plain.7z" << false;
    QTest::newRow("zip") << "plain.zip" << false;
    QTest::newRow("7z beside a file of the same name") << "plain.7z" << true;
  }

  void extractsBesideTheBundle() {
    QFETCH(QString, archive);
    QFETCH(bool, ownFileThere);
    const QString bundle = bundleWith(archive);
    if (ownFileThere)
      writeFile(folderOf(bundle) + "/tree/a.txt", "mine");
    const Finished stub = runStub(bundle);
    QVERIFY2(stub.exitCode == 0, qPrintable(stub.errors));
    QCOMPARE(treeIn(folderOf(bundle)), ownFileThere ? originalTreeBesideOwnFile() : originalTree());
    QCOMPARE(QDir(folderOf(bundle)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList({"My Files.app", "tree"}));
  }

  void printsTheNotes_data() {
    QTest::addColumn<QByteArray>("notes");
    QTest::addColumn<QString>("printed");
    const QString text = "Read me first: ünïcödé ✓\nsecond line";
    QStringEncoder asQuilletWrites(QStringConverter::Utf16, QStringConverter::Flag::WriteBom);
    QStringEncoder bigEndian(QStringConverter::Utf16BE, QStringConverter::Flag::WriteBom);
    QTest::newRow("UTF-16 with mark") << QByteArray(asQuilletWrites.encode(text)) << text;
    QTest::newRow("UTF-16 big-endian") << QByteArray(bigEndian.encode(text)) << text;
    QTest::newRow("empty") << QByteArray() << QString();
  }

  void printsTheNotes() {
    QFETCH(QByteArray, notes);
    QFETCH(QString, printed);
    const Finished stub = runStub(bundleWith("plain.7z", notes));
    QCOMPARE(stub.exitCode, 0);
    const QString beforeExtracting = stub.output.section("Extracting the files of", 0, 0);
    QCOMPARE(beforeExtracting.trimmed(), printed);
  }

  void protectedArchivesNeedTheRightPassword_data() {
    QTest::addColumn<QString>("archive");
    QTest::newRow("7z, names hidden") << "headers.7z";
    QTest::newRow("7z, names visible") << "data.7z";
    QTest::newRow("zip") << "secret.zip";
  }

  void protectedArchivesNeedTheRightPassword() {
    QFETCH(QString, archive);
    const QString bundle = bundleWith(archive);
    writeFile(folderOf(bundle) + "/tree/a.txt", "mine");
    const auto before = snapshot(folderOf(bundle));

    const Finished withoutPassword = runStub(bundle);
    QVERIFY(withoutPassword.exitCode != 0);
    QVERIFY2(withoutPassword.errors.contains("--password"), qPrintable(withoutPassword.errors));
    QCOMPARE(snapshot(folderOf(bundle)), before);

    const Finished wrongPassword = runStub(bundle, {"--password", "guess"});
    QVERIFY(wrongPassword.exitCode != 0);
    QVERIFY2(wrongPassword.errors.contains("wrong password"), qPrintable(wrongPassword.errors));
    QCOMPARE(snapshot(folderOf(bundle)), before);

    QCOMPARE(runStub(bundle, {"--password", "secret"}).exitCode, 0);
    QCOMPARE(treeIn(folderOf(bundle)), originalTreeBesideOwnFile());
  }

  void saysWhichPackageProvides7z() {
    QProcessEnvironment environment = withoutDisplay();
    environment.insert("PATH", sources_.path());
    const QString bundle = bundleWith("plain.7z");
    const Finished stub = run(bundle + "/Contents/MacOS/sfxmodule", {}, environment);
    QVERIFY(stub.exitCode != 0);
    QVERIFY2(stub.errors.contains("p7zip-full"), qPrintable(stub.errors));
  }

  void launcherBesideContentsRunsTheStub() {
    const QString bundle = bundleWith("plain.7z");
    const Finished launcher = run(bundle + "/Extract Archive", {});
    QVERIFY2(launcher.exitCode == 0, qPrintable(launcher.errors));
    QCOMPARE(treeIn(folderOf(bundle)), originalTree());
  }

  void bundleLayout() {
    const QString bundle = builtBundle();
    QVERIFY(QDir(bundle + "/Contents/Resources").isEmpty());
    QVERIFY(QFileInfo(bundle + "/Extract Archive").isExecutable());
    const QStringList entry = QString::fromUtf8(contentOf(bundle + "/Extract Archive.desktop"))
                                  .split('\n', Qt::SkipEmptyParts);
    QCOMPARE(entry.value(0), "[Desktop Entry]");
    for (const char* line :
         {"Type=Application", "Name=Extract Archive", "Terminal=false", "Icon=package-x-generic"})
      QVERIFY2(entry.contains(line), qPrintable(line));
    const QStringList exec = entry.filter(QRegularExpression("^Exec=.*Extract Archive.* %k$"));
    QCOMPARE(exec.size(), 1);
  }

  // Launches the desktop entry the way GNOME's file manager does, through GLib,
  // from a folder whose name needs quoting.
  void desktopEntryLaunchesThroughGLib() {
    const QString python = "/usr/bin/python3";
    if (run(python, {"-c", "import gi"}).exitCode != 0)
      QSKIP("needs python3-gi to load the entry through GLib");
    const QString bundle = bundleWith("plain.7z");
    // Waits for the launched program, so its status and output come back here.
    const QString script =
        "import os, sys, gi\n"
        "gi.require_version('Gio', '2.0')\n"
        "from gi.repository import Gio, GLib\n"
        "pids = []\n"
        "Gio.DesktopAppInfo.new_from_filename(sys.argv[1]).launch_uris_as_manager(\n"
        "    [], None, GLib.SpawnFlags.SEARCH_PATH | GLib.SpawnFlags.DO_NOT_REAP_CHILD,\n"
        "    None, None, lambda info, pid, data: pids.append(pid), None)\n"
        "sys.exit(os.waitstatus_to_exitcode(os.waitpid(pids[0], 0)[1]))\n";
    const Finished launch = run(python, {"-c", script, bundle + "/Extract Archive.desktop"});
    QVERIFY2(launch.exitCode == 0, qPrintable(launch.errors));
    QCOMPARE(treeIn(folderOf(bundle)), originalTree());
  }
};

QTEST_GUILESS_MAIN(SfxModuleTest)
#include "tst_sfxmodule.moc"
