#include "FakeDesktop.h"
#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "engine/listing/OutputLines.h"
#include "platform/PreferencesStore.h"
#include "platform/ProcessToolRunner.h"
#include "quick/MiniArchiveCommands.h"
#include "quick/MiniEntryIcons.h"
#include "quick/MiniListing.h"
#include "quick/PanelGeometry.h"
#include "quick/archivePreviewMiniClass.h"
#include "quick/archivePreviewWindowClass.h"
#include "quick/contextMenuClass.h"
#include "quick/contextMenuWindowClass.h"
#include "support/TestArchives.h"

#include <QDir>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPainter>
#include <QPushButton>
#include <QStandardItemModel>
#include <QTableView>
#include <QTemporaryDir>
#include <QTest>

namespace {

// Plain files whose names would act as switches or patterns; "start.png"
// is what "st*ar.png" would match as a pattern.
const QStringList kFiles = {"a file.txt", "-dash.txt", "st*ar.png", "start.png",
                            "a_very_long_name_that_goes_past_the_column_of_arj.txt"};

struct Browser {
  explicit Browser(ToolRunner& runner) : controller{{runner, dialogs, desktop, [] {}}} {}

  archivePreviewMiniClass& mini() { return *controller.miniArchiveBrowser(); }
  archivePreviewWindowClass* window() { return mini().miniArchiveWindow(); }
  QStringList names() {
    QStringList listed;
    QStandardItemModel* rows = window()->theArrayController();
    for (int row = 0; row < rows->rowCount(); ++row)
      listed << rows->item(row)->text();
    return listed;
  }
  QString count() { return window()->fieldOpenedArchiveNumberOfFiles()->text(); }
  void open(const QString& archive) {
    controller.setHiddenFileName(archive);
    mini().fillListBoxWithArchiveContent();
  }
  void select(const QStringList& wanted) {
    QTableView* table = window()->openedArchiveTableView();
    table->clearSelection();
    const QStringList listed = names();
    for (const QString& name : wanted)
      table->selectionModel()->select(
          window()->theArrayController()->index(static_cast<int>(listed.indexOf(name)), 0),
          QItemSelectionModel::Select | QItemSelectionModel::Rows);
  }

  FakeDialogs dialogs;
  FakeDesktop desktop;
  contextMenuClass controller;
};

QStringList sorted(QStringList names) {
  names.sort();
  return names;
}

// Makes type's archive of kFiles (and, where the tool takes folders, an
// application bundle) in folder with the installed tools.
QString makeArchive(const QString& folder, const QString& type) {
  for (const QString& name : kFiles)
    TestArchives::writeFile(folder + u'/' + name, name.toUtf8());
  TestArchives::writeFile(folder + "/App.app/Contents/Info.plist", "plist");
  const QString archive = folder + "/pack." + type;
  QStringList files;
  for (const QString& name : kFiles)
    files << "./" + name;
  if (type == "arj")
    TestArchives::runIn(folder, "arj", QStringList{"a", "-y", archive} + files);
  else if (type == "lha")
    TestArchives::runIn(folder, "jlha", QStringList{"a", archive} + files);
  else if (type == "tar")
    TestArchives::runIn(folder, "tar", QStringList{"cf", archive, "--"} + kFiles << "App.app");
  else
    TestArchives::runIn(folder, "7z", QStringList{"a", "-bd", archive} + files << "App.app");
  for (const QString& name : kFiles)
    QFile::remove(folder + u'/' + name);
  return archive;
}

void saveScreenshot(const QImage& image, const QString& name) {
  const QString folder = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
  if (folder.isEmpty())
    return;
  QDir().mkpath(folder);
  image.save(folder + u'/' + name + QStringLiteral(".png"));
}

}  // namespace

class MiniBrowserTest : public QObject {
  Q_OBJECT

 private slots:
  void init() {
    for (const char* key : {"openDestinationAfterExtraction", "playSoundWhenDone"})
      PreferencesStore::remove(QString::fromLatin1(key));
  }

  void iconTable_data() {
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("resource");
    QTest::newRow("inside a bundle") << "Foo.APP/Contents/Info.plist"
                                     << "application.png";
    QTest::newRow("png before tar") << "tarball.PNG"
                                    << "image.png";
    QTest::newRow("icns") << "icon.icns"
                          << "image.icns";
    QTest::newRow("tar anywhere") << "start.txt"
                                  << "zip.icns";
    QTest::newRow("gz") << "x.tar.gz"
                        << "zip.icns";
    QTest::newRow("audio") << "song.Flac"
                           << "audio.png";
    QTest::newRow("gif is no image here") << "anim.gif"
                                          << "unknowntype.png";
    QTest::newRow("nor jpeg") << "photo.jpeg"
                              << "unknowntype.png";
  }
  void iconTable() {
    QFETCH(QString, name);
    QFETCH(QString, resource);
    QCOMPARE(MiniEntryIcons::resourceFor(name), resource);
    QVERIFY(!MiniEntryIcons().setListViewIcon(name).pixmap(16).isNull());
  }

  // Too little output ends the listing with no rows instead of reading
  // past its last line.
  void shortOutputListsNothing_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("output");
    for (const char* type : {"rar", "arj", "lha", "zip", "tar", "7z"}) {
      QTest::addRow("%s empty", type) << type << QByteArray();
      QTest::addRow("%s two lines", type) << type << QByteArray("  x   y  \n  z   w\n");
    }
    QTest::newRow("arj lone name last")
        << "arj" << QByteArray("ARJ32 v 3.10\n\n\n\n\n\nlong_name \n");
  }
  void shortOutputListsNothing() {
    QFETCH(QString, type);
    QFETCH(QByteArray, output);
    RecordingIcons icons;
    QVERIFY(MiniListing::rows(type, OutputLines(output), LhaVersion::Lhasa, icons).isEmpty());
  }

  // Before rar 5 the name keeps the blank in front of it and ends at two
  // blanks; a bundle's contents are listed.
  void rarNamesBeforeVersion5() {
    const QByteArray output =
        "\nRAR 3.90   Copyright (c) 1993-2009 Alexander Roshal\n"
        "Shareware version         Type RAR -? for help\n\nArchive x.rar\n\n"
        " Name             Size   Packed Ratio  Date   Time     Attr\n"
        "---------------------\n"
        " my  file.txt      3        3 100% 13-07-09 17:56 -rw-r--r--\n"
        " Foo.app/Contents/Info.plist  5  5 100% 13-07-09 17:56 -rw-r--r--\n"
        "---------------------\n    2     8    8 100%\n\n";
    RecordingIcons icons;
    const auto rows = MiniListing::rows("rar", OutputLines(output), LhaVersion::Lhasa, icons);
    QCOMPARE(icons.names, (QStringList{" my", " Foo.app/Contents/Info.plist"}));
    QCOMPARE(rows.size(), 2);
  }

  void deletionPicksTheToolByTheWholeName_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("tool");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("x.arj goes to 7-Zip") << "/a/x.arj"
                                         << "7za" << QStringList{"d", "/a/x.arj", "e"};
    QTest::newRow("named rar") << "/a/rar"
                               << "r" << QStringList{"d", "/a/rar", "--", "-e"};
    QTest::newRow("named arj") << "/a/arj"
                               << "arj" << QStringList{"d", "/a/arj", "e"};
    QTest::newRow("leading dash") << "/a/y.zip"
                                  << "7za" << QStringList{"d", "--", "/a/y.zip", "-e"};
  }
  void deletionPicksTheToolByTheWholeName() {
    QFETCH(QString, archive);
    QFETCH(QString, tool);
    QFETCH(QStringList, arguments);
    const QString entry = QString(arguments.last()).prepend(tool == "arj" ? "dir/" : "");
    const ToolRun run = MiniArchiveCommands::deletion(archive, entry);
    QCOMPARE(run.program.section(u'/', -1), tool);
    QCOMPARE(run.arguments, arguments);
  }

  void listsRealArchives_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("names");
    const QStringList bundle = {"App.app"};
    QTest::newRow("zip") << "zip" << kFiles + bundle;
    QTest::newRow("7z") << "7z" << kFiles + bundle;
    QTest::newRow("tar") << "tar" << kFiles + bundle;
    QTest::newRow("arj") << "arj" << kFiles;
    QTest::newRow("lha") << "lha" << kFiles;
  }
  void listsRealArchives() {
    QFETCH(QString, type);
    QFETCH(QStringList, names);
    QTemporaryDir folder;
    ProcessToolRunner runner;
    Browser fx(runner);
    fx.open(makeArchive(folder.path(), type));
    QCOMPARE(sorted(fx.names()), sorted(names));
    QCOMPARE(fx.count(), QString::number(names.size()));
  }

  // Other types leave the list and its count as they were.
  void aTgzLeavesTheList() {
    QTemporaryDir folder;
    ProcessToolRunner runner;
    Browser fx(runner);
    fx.open(makeArchive(folder.path(), "zip"));
    const QStringList before = fx.names();
    fx.open(folder.filePath("other.tgz"));
    QCOMPARE(fx.names(), before);
    QCOMPARE(fx.count(), QString::number(before.size()));
  }

  // A chosen name is added as itself, never as a switch or a pattern.
  void addsToRealArchives_data() {
    QTest::addColumn<QString>("type");
    for (const char* type : {"zip", "7z", "tar", "arj", "lha"})
      QTest::newRow(type) << type;
  }
  void addsToRealArchives() {
    QFETCH(QString, type);
    QTemporaryDir folder;
    const QString archive = makeArchive(folder.path(), type);
    const QStringList added = {"new one.txt", "-added.txt"};
    for (const QString& name : added)
      TestArchives::writeFile(folder.filePath("in/" + name), "new");
    ProcessToolRunner runner;
    Browser fx(runner);
    fx.open(archive);
    const QStringList before = fx.names();
    QStringList paths;
    for (const QString& name : added)
      paths << folder.filePath("in/" + name);
    fx.dialogs.openAnswers << paths;
    QTest::mouseClick(fx.window()->addButton(), Qt::LeftButton);
    QCOMPARE(fx.dialogs.openPanels.last().title, QString("Select files to add"));
    QVERIFY(fx.dialogs.alerts.isEmpty());
    // lha keeps the path it was given, and the browser lists whole paths.
    QCOMPARE(sorted(fx.names()), sorted(before + (type == "lha" ? paths : added)));
  }

  // Only the words "gzip" and "bzip2" are refused: a gz archive goes to
  // 7-Zip like any other.
  void addingByType_data() {
    QTest::addColumn<QString>("archive");
    QTest::addColumn<QString>("alert");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("gz") << "/srv/y.gz" << QString() << QStringList{"a", "y.gz", "/in/F"};
    QTest::newRow("gzip") << "/srv/y.gzip"
                          << "Archive not supported." << QStringList{};
    QTest::newRow("bzip2") << "/srv/y.bzip2"
                           << "Archive not supported." << QStringList{};
    QTest::newRow("no archive") << QString() << "Attention." << QStringList{};
  }
  void addingByType() {
    QFETCH(QString, archive);
    QFETCH(QString, alert);
    QFETCH(QStringList, arguments);
    FakeToolRunner runner;
    Browser fx(runner);
    fx.controller.setHiddenFileName(archive);
    fx.dialogs.openAnswers << QStringList{"/in/F"};
    fx.mini().btnAdd();
    QCOMPARE(fx.dialogs.alerts.value(0).title, alert);
    QCOMPARE(runner.runs.value(0).arguments, arguments);
  }

  // 7-Zip removes the entry from zip, 7z and tar; it cannot change arj and
  // lha archives, which stay as they were, with a line saying so.
  void removesFromRealArchives_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("removes");
    QTest::newRow("zip") << "zip" << true;
    QTest::newRow("7z") << "7z" << true;
    QTest::newRow("tar") << "tar" << true;
    QTest::newRow("arj") << "arj" << false;
    QTest::newRow("lha") << "lha" << false;
  }
  void removesFromRealArchives() {
    QFETCH(QString, type);
    QFETCH(bool, removes);
    QTemporaryDir folder;
    ProcessToolRunner runner;
    Browser fx(runner);
    fx.open(makeArchive(folder.path(), type));
    const QStringList before = fx.names();
    const QStringList chosen = {"st*ar.png", "-dash.txt"};
    fx.select(chosen);
    QTest::mouseClick(fx.window()->removeButton(), Qt::LeftButton);
    QVERIFY(fx.dialogs.alerts.isEmpty());
    QStringList expected = before;
    if (removes)
      expected.removeIf([&](const QString& name) { return chosen.contains(name); });
    QCOMPARE(sorted(fx.names()), sorted(expected));
    QCOMPARE(fx.window()->findChild<QLabel*>("miniArchiveProblem")->isVisibleTo(fx.window()),
             !removes);
    if (type == "arj")
      saveScreenshot(fx.window()->grab().toImage(), "mini-browser-failed-removal");
  }

  void removalRefusals_data() {
    QTest::addColumn<QString>("archiveName");
    QTest::addColumn<bool>("everything");
    QTest::addColumn<QString>("message");
    QTest::newRow("all rows") << "pack.zip" << true
                              << "You have to leave at last one file or directory in the archive.";
    QTest::newRow("archive named arj")
        << "arj" << false << "Deleting files from ARJ archives is still not available";
  }
  void removalRefusals() {
    QFETCH(QString, archiveName);
    QFETCH(bool, everything);
    QFETCH(QString, message);
    FakeToolRunner runner;
    Browser fx(runner);
    fx.controller.setHiddenFileName("/srv/" + archiveName);
    for (const char* name : {"a", "b"})
      fx.window()->theArrayController()->appendRow(new QStandardItem(QString::fromLatin1(name)));
    fx.select(everything ? QStringList{"a", "b"} : QStringList{"a"});
    fx.mini().btnRemove();
    QCOMPARE(fx.dialogs.alerts.size(), 1);
    QCOMPARE(fx.dialogs.alerts.first().message, message);
    QVERIFY(runner.runs.isEmpty());
  }

  // Only the chosen entries of zip and 7z archives land in the folder;
  // tar entries are passed over silently, arj and lha are refused.
  void extractsFromRealArchives_data() {
    QTest::addColumn<QString>("type");
    QTest::addColumn<QStringList>("extracted");
    QTest::addColumn<int>("alerts");
    const QStringList chosen = {"-dash.txt", "st*ar.png"};
    QTest::newRow("zip") << "zip" << chosen << 0;
    QTest::newRow("7z") << "7z" << chosen << 0;
    QTest::newRow("tar") << "tar" << QStringList{} << 0;
    QTest::newRow("arj") << "arj" << QStringList{} << 1;
    QTest::newRow("lha") << "lha" << QStringList{} << 1;
  }
  void extractsFromRealArchives() {
    QFETCH(QString, type);
    QFETCH(QStringList, extracted);
    QFETCH(int, alerts);
    PreferencesStore::setYes("openDestinationAfterExtraction", true);
    PreferencesStore::setYes("playSoundWhenDone", true);
    QTemporaryDir folder;
    ProcessToolRunner runner;
    Browser fx(runner);
    fx.open(makeArchive(folder.path(), type));
    fx.select({"-dash.txt", "st*ar.png"});
    const QString destination = folder.filePath("out");
    QDir().mkpath(destination);
    fx.dialogs.openAnswers << QStringList{destination};
    QTest::mouseClick(fx.window()->extractButton(), Qt::LeftButton);
    QCOMPARE(fx.dialogs.openPanels.last().title, QString("Select directory to extract to"));
    QCOMPARE(fx.dialogs.alerts.size(), alerts);
    QCOMPARE(TestArchives::treeUnder(destination).keys(), extracted);
    QCOMPARE(fx.desktop.shownFolders.size(), 1 - alerts);
    QCOMPARE(fx.desktop.beeps, 1 - alerts);
  }

  void theBrowserSitsBesideThePanel() {
    QCOMPARE(PanelGeometry::besidePanel(QRect(100, 200, 300, 90), QSize(340, 400)),
             QPoint(400, -20));
  }

  // It opens beside the dimmed panel and, closed, leaves the panel as it
  // was and Quillet running.
  void opensAndQuitsBackToThePanel() {
    QTemporaryDir folder;
    const QString archive = makeArchive(folder.path(), "zip");
    ProcessToolRunner runner;
    Browser fx(runner);
    contextMenuWindowClass* panel = fx.controller.contextWindow();
    fx.controller.setHiddenFileName(archive);
    panel->move(120, 300);
    fx.controller.fadeInPanel();
    QTest::mouseClick(panel->browseButton(), Qt::LeftButton);
    archivePreviewWindowClass* window = fx.window();
    QVERIFY(window->isVisible());
    QVERIFY(window->windowFlags() & Qt::WindowStaysOnTopHint);
    QCOMPARE(window->pos(), PanelGeometry::besidePanel(panel->frameGeometry(), window->size()));
    QCOMPARE(fx.names().size(), kFiles.size() + 1);
    // Opacity is kept in steps of 1/255.
    QTRY_VERIFY(qAbs(panel->windowOpacity() - 0.5) < 0.01);
    QTRY_COMPARE(window->windowOpacity(), 1.0);
    fx.select({"a file.txt", "st*ar.png"});

    // Both windows as they stand on the screen, in one picture.
    const QRect both = panel->frameGeometry().united(window->frameGeometry());
    QImage shot(both.size(), QImage::Format_ARGB32_Premultiplied);
    shot.fill(QColor(0x3b, 0x4a, 0x5c));
    QPainter painter(&shot);
    painter.setOpacity(0.5);
    painter.drawPixmap(panel->pos() - both.topLeft(), panel->grab());
    painter.setOpacity(1.0);
    painter.drawPixmap(window->pos() - both.topLeft(), window->grab());
    painter.end();
    saveScreenshot(shot, "mini-browser");

    QTest::mouseClick(window->quitButton(), Qt::LeftButton);
    QTRY_VERIFY(!window->isVisible());
    QTRY_VERIFY(qAbs(panel->windowOpacity() - contextMenuWindowClass::kOpacity) < 0.01);
    QVERIFY(panel->isVisible());
  }
};

QTEST_MAIN(MiniBrowserTest)
#include "tst_mini_browser.moc"
