#include "FakeDialogs.h"
#include "FakeToolRunner.h"
#include "app/FileAssociation.h"
#include "app/FirstTimeAssociation.h"
#include "app/PreferencesClass.h"
#include "create/CreateArchiveWindow.h"
#include "create/JobSettings.h"
#include "platform/PreferenceKeys.h"
#include "platform/ProcessToolRunner.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>

#include <map>
#include <optional>

namespace {

using namespace PreferenceKeys;

// What another process would read: a store object of its own.
QString stored(const QString& key) {
  return QSettings(QStringLiteral("Quillet"), QStringLiteral("Quillet")).value(key).toString();
}

QStringList storedKeys() {
  QStringList keys = QSettings(QStringLiteral("Quillet"), QStringLiteral("Quillet")).allKeys();
  keys.sort();
  return keys;
}

void store(const QString& key, const QString& value) {
  QSettings settings(QStringLiteral("Quillet"), QStringLiteral("Quillet"));
  settings.setValue(key, value);
}

void clearStore() {
  QSettings settings(QStringLiteral("Quillet"), QStringLiteral("Quillet"));
  settings.clear();
}

// Sets environment variables (an empty value unsets) until it goes.
class ScopedEnvironment {
 public:
  explicit ScopedEnvironment(const std::map<QByteArray, QByteArray>& values) {
    for (const auto& [name, value] : values) {
      saved_[name] = qEnvironmentVariableIsSet(name.constData())
                         ? std::optional<QByteArray>(qgetenv(name.constData()))
                         : std::nullopt;
      if (value.isEmpty())
        qunsetenv(name.constData());
      else
        qputenv(name.constData(), value);
    }
  }
  ~ScopedEnvironment() {
    for (const auto& [name, value] : saved_) {
      if (value)
        qputenv(name.constData(), *value);
      else
        qunsetenv(name.constData());
    }
  }

 private:
  std::map<QByteArray, std::optional<QByteArray>> saved_;
};

// The desktop's choices as xdg-mime wrote them.
std::map<QString, QString> defaultApplicationsIn(const QString& mimeappsList) {
  QFile file(mimeappsList);
  if (!file.open(QIODevice::ReadOnly))
    return {};
  std::map<QString, QString> defaults;
  bool inDefaults = false;
  for (const QByteArray& raw : file.readAll().split('\n')) {
    const QString line = QString::fromUtf8(raw).trimmed();
    if (line.startsWith(u'['))
      inDefaults = line == u"[Default Applications]";
    else if (inDefaults && line.contains(u'='))
      defaults[line.section(u'=', 0, 0)] = line.section(u'=', 1);
  }
  return defaults;
}

QList<FakeToolRunner::Recorded> expectedAssociationRuns() {
  QList<FakeToolRunner::Recorded> runs;
  for (const char* type :
       {"application/vnd.rar", "application/zip", "application/x-tar", "application/x-tar",
        "application/x-bzip2", "application/gzip", "application/x-7z-compressed",
        "application/x-lha", "application/x-lzh-compressed", "application/x-arj",
        "application/x-arj"})
    runs.append({"xdg-mime", {"default", "quillet.desktop", QString::fromLatin1(type)}, {}, {}});
  return runs;
}

void compareRuns(const QList<FakeToolRunner::Recorded>& actual,
                 const QList<FakeToolRunner::Recorded>& expected) {
  QCOMPARE(actual.size(), expected.size());
  for (qsizetype i = 0; i < actual.size(); ++i) {
    QCOMPARE(actual[i].program, expected[i].program);
    QCOMPARE(actual[i].arguments, expected[i].arguments);
  }
}

// The preferences window over a main-window stand-in that also owns the
// create window whose default-level actions the window offers.
struct Preferences {
  QWidget owner;
  JobSettings settings;
  CreateArchiveWindow createWindow{settings, &owner};
  FakeDialogs dialogs;
  FakeToolRunner runner;
  PreferencesClass controller{&owner, dialogs, runner,
                              createWindow.findChildren<QAction*>(QRegularExpression(
                                  QStringLiteral("^btnDefaultCompressionLevel\\w+Pref$")))};

  template <typename Widget>
  Widget* control(const QString& name) const {
    return controller.windowPreferences()->findChild<Widget*>(name);
  }
  QPushButton* associateButton() const { return control<QPushButton>("btnAssociateNow"); }
  void choose(const QString& popUp, int index) {
    QComboBox* box = control<QComboBox>(popUp);
    box->setCurrentIndex(index);
    emit box->activated(index);
  }
};

}  // namespace

// The preferences window, the start-up that fills it, and the file-type
// association from both of its windows.
class PreferencesTest : public QObject {
  Q_OBJECT

 private slots:
  void init() { clearStore(); }

  void checkboxesWriteTheirKeys_data() {
    QTest::addColumn<QString>("checkbox");
    QTest::addColumn<QString>("key");
    QTest::newRow("surrounding folder")
        << "chkCreateSurroundingFolderBeforeExtraction" << kCreateSurroundingFolderBeforeExtraction;
    QTest::newRow("__MACOSX") << "chkRemoveMACOSXFolder" << kAutoremoveMACOSXfolder;
    QTest::newRow(".DS_Store") << "chkExcludeDS_Store" << kExcludeDS_Store;
    QTest::newRow("quick-extract window")
        << "chkEnableCustomContextMenu" << kEnableCustomContextMenu;
    QTest::newRow("first file's name") << "chkUseTheFirstFileFromTheArrayForArchiveName"
                                       << kPrefUseFisrstNameOfTheArrayAsArchiveName;
    QTest::newRow("update check") << "chkAutoUpdateChkBox" << kAutoCheckForNewVersion;
    QTest::newRow("compressed tar archives")
        << "chkListCompressedTarArchives" << kListCompressedTarArchives;
  }
  void checkboxesWriteTheirKeys() {
    QFETCH(QString, checkbox);
    QFETCH(QString, key);
    Preferences window;
    QCheckBox* box = window.control<QCheckBox>(checkbox);
    QVERIFY(box);
    box->setChecked(false);
    box->click();
    QCOMPARE(stored(key), QString("YES"));
    box->click();
    QCOMPARE(stored(key), QString("NO"));
    QCOMPARE(storedKeys(), QStringList{key});
  }

  void dropPopUpsWriteTheirTexts_data() {
    QTest::addColumn<QString>("popUp");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("text");
    const QStringList methods = {"ZIP", "7z", "RAR", "ARJ", "LHA"};
    for (int i = 0; i < methods.size(); ++i)
      QTest::addRow("method %s", qPrintable(methods[i]))
          << "onDropCompressionMethodDropDown" << i << kOnDropCompressionMethod << methods[i];
    for (int i = 0; i < 5; ++i)
      QTest::addRow("level %d", i) << "onDropComplressionLevelDropDown" << i
                                   << kOnDropCompressionLevel << QString::number(i);
  }
  void dropPopUpsWriteTheirTexts() {
    QFETCH(QString, popUp);
    QFETCH(int, index);
    QFETCH(QString, key);
    QFETCH(QString, text);
    Preferences window;
    window.choose(popUp, index);
    QCOMPARE(stored(key), text);
    QCOMPARE(storedKeys(), QStringList{key});
  }

  void defaultLevelPopUpStoresThroughTheCreateRule_data() {
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("text");
    QTest::newRow("Lowest") << 0 << "Lowest"
                            << "Lowest";
    QTest::newRow("Low") << 1 << "Low"
                         << "Low";
    QTest::newRow("Normal") << 2 << "Normal"
                            << "Normal";
    QTest::newRow("High") << 3 << "High"
                          << "High";
    QTest::newRow("Higher stores Ultra") << 4 << "Higher"
                                         << "Ultra";
  }
  void defaultLevelPopUpStoresThroughTheCreateRule() {
    QFETCH(int, index);
    QFETCH(QString, item);
    QFETCH(QString, text);
    Preferences window;
    QCOMPARE(window.control<QComboBox>("prefsDefaultCompressionLevel")->itemText(index), item);
    window.choose("prefsDefaultCompressionLevel", index);
    QCOMPARE(stored(kDefaultCompressionLevel), text);
  }

  void onDropPreferencesAreLoadedOrRepaired_data() {
    QTest::addColumn<QString>("method");
    QTest::addColumn<QString>("level");
    QTest::addColumn<int>("methodIndex");
    QTest::addColumn<int>("levelIndex");
    QTest::addColumn<QString>("methodAfter");
    QTest::addColumn<QString>("levelAfter");
    // -1: the pop-up keeps the selection it had.
    QTest::newRow("absent") << QString() << QString() << -1 << -1 << "ZIP"
                            << "2";
    QTest::newRow("7z, 0") << "7z"
                           << "0" << 1 << 0 << "7z"
                           << "0";
    QTest::newRow("RAR, 4") << "RAR"
                            << "4" << 2 << 4 << "RAR"
                            << "4";
    QTest::newRow("ZIP, 2") << "ZIP"
                            << "2" << 0 << 2 << "ZIP"
                            << "2";
    QTest::newRow("ARJ, 1") << "ARJ"
                            << "1" << 3 << 1 << "ARJ"
                            << "1";
    QTest::newRow("LHA, 3") << "LHA"
                            << "3" << 4 << 3 << "LHA"
                            << "3";
    QTest::newRow("wrong case") << "zip"
                                << "2" << -1 << 2 << "ZIP"
                                << "2";
    QTest::newRow("unknown level") << "7z"
                                   << "7" << 1 << -1 << "7z"
                                   << "2";
    QTest::newRow("level with a space") << "LHA"
                                        << " 1" << 4 << -1 << "LHA"
                                        << "2";
    QTest::newRow("empty texts") << ""
                                 << "" << -1 << -1 << "ZIP"
                                 << "2";
  }
  void onDropPreferencesAreLoadedOrRepaired() {
    QFETCH(QString, method);
    QFETCH(QString, level);
    QFETCH(int, methodIndex);
    QFETCH(int, levelIndex);
    QFETCH(QString, methodAfter);
    QFETCH(QString, levelAfter);
    if (!method.isNull())
      store(kOnDropCompressionMethod, method);
    if (!level.isNull())
      store(kOnDropCompressionLevel, level);
    Preferences window;
    auto* methods = window.control<QComboBox>("onDropCompressionMethodDropDown");
    auto* levels = window.control<QComboBox>("onDropComplressionLevelDropDown");
    const int methodBefore = methods->currentIndex();
    const int levelBefore = levels->currentIndex();

    window.controller.loadOnDropPreferences();

    QCOMPARE(methods->currentIndex(), methodIndex < 0 ? methodBefore : methodIndex);
    QCOMPARE(levels->currentIndex(), levelIndex < 0 ? levelBefore : levelIndex);
    QCOMPARE(stored(kOnDropCompressionMethod), methodAfter);
    QCOMPARE(stored(kOnDropCompressionLevel), levelAfter);
    QCOMPARE(storedKeys(), QStringList({kOnDropCompressionLevel, kOnDropCompressionMethod}));
  }

  void aRepairLeavesThePopUpsSelection() {
    store(kOnDropCompressionMethod, "TAR");
    store(kOnDropCompressionLevel, "9");
    Preferences window;
    auto* methods = window.control<QComboBox>("onDropCompressionMethodDropDown");
    auto* levels = window.control<QComboBox>("onDropComplressionLevelDropDown");
    methods->setCurrentIndex(3);
    levels->setCurrentIndex(4);
    window.controller.loadOnDropPreferences();
    QCOMPARE(methods->currentIndex(), 3);
    QCOMPARE(levels->currentIndex(), 4);
    QCOMPARE(stored(kOnDropCompressionMethod), QString("ZIP"));
    QCOMPARE(stored(kOnDropCompressionLevel), QString("2"));
  }

  void startUpWritesOnlyTheOnDropDefaults() {
    Preferences window;
    window.controller.showStoredPreferences();
    QCOMPARE(storedKeys(), QStringList({kOnDropCompressionLevel, kOnDropCompressionMethod}));
  }

  void startUpSwitchesCheckboxesOnButNeverOff_data() {
    QTest::addColumn<QString>("checkbox");
    QTest::addColumn<QString>("key");
    QTest::newRow("surrounding folder")
        << "chkCreateSurroundingFolderBeforeExtraction" << kCreateSurroundingFolderBeforeExtraction;
    QTest::newRow("__MACOSX") << "chkRemoveMACOSXFolder" << kAutoremoveMACOSXfolder;
    QTest::newRow(".DS_Store") << "chkExcludeDS_Store" << kExcludeDS_Store;
    QTest::newRow("quick-extract window")
        << "chkEnableCustomContextMenu" << kEnableCustomContextMenu;
    QTest::newRow("first file's name") << "chkUseTheFirstFileFromTheArrayForArchiveName"
                                       << kPrefUseFisrstNameOfTheArrayAsArchiveName;
  }
  void startUpSwitchesCheckboxesOnButNeverOff() {
    QFETCH(QString, checkbox);
    QFETCH(QString, key);
    const QStringList values = {"YES", "NO", "yes", ""};
    for (const QString& value : values) {
      store(key, value);
      for (const bool built : {false, true}) {
        Preferences window;
        QCheckBox* box = window.control<QCheckBox>(checkbox);
        box->setChecked(built);
        window.controller.showStoredPreferences();
        QCOMPARE(box->isChecked(), built || value == u"YES");
      }
    }
  }

  void startUpShowsTheUpdateCheck_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<bool>("on");
    QTest::newRow("absent") << QString() << true;
    QTest::newRow("YES") << "YES" << true;
    QTest::newRow("NO") << "NO" << false;
  }
  void startUpShowsTheUpdateCheck() {
    QFETCH(QString, value);
    QFETCH(bool, on);
    if (!value.isNull())
      store(kAutoCheckForNewVersion, value);
    for (const bool built : {false, true}) {
      Preferences window;
      QCheckBox* box = window.control<QCheckBox>("chkAutoUpdateChkBox");
      box->setChecked(built);
      window.controller.showStoredPreferences();
      QCOMPARE(box->isChecked(), on);
    }
    QCOMPARE(stored(kAutoCheckForNewVersion), value);
  }

  void startUpShowsTheDefaultLevel_data() {
    QTest::addColumn<QString>("value");
    QTest::addColumn<int>("index");
    QTest::newRow("Lowest") << "Lowest" << 0;
    QTest::newRow("Low") << "Low" << 1;
    QTest::newRow("Normal") << "Normal" << 2;
    QTest::newRow("High") << "High" << 3;
    QTest::newRow("Ultra") << "Ultra" << 4;
    QTest::newRow("the item's label") << "Higher" << 2;
    QTest::newRow("absent") << QString() << 2;
  }
  void startUpShowsTheDefaultLevel() {
    QFETCH(QString, value);
    QFETCH(int, index);
    if (!value.isNull())
      store(kDefaultCompressionLevel, value);
    Preferences window;
    auto* popUp = window.control<QComboBox>("prefsDefaultCompressionLevel");
    popUp->setCurrentIndex(4 - index);
    window.controller.showStoredPreferences();
    QCOMPARE(popUp->currentIndex(), index);
    QCOMPARE(stored(kDefaultCompressionLevel), value);
  }

  void startUpShowsTheBackupFolder() {
    store(kDefaultBackupDirectory, "/home/someone/Backups");
    Preferences window;
    window.controller.showStoredPreferences();
    QCOMPARE(window.control<QLineEdit>("backupFolderEditBox")->text(),
             QString("/home/someone/Backups"));
  }

  void theBackupFolderIsChosenInAFolderPanel() {
    Preferences window;
    const QString folder = QDir::tempPath() + "/my backups";
    window.dialogs.openAnswers = {{folder}};
    window.control<QPushButton>("btnChooseBackupFolder")->click();
    QCOMPARE(window.dialogs.openPanels.size(), 1);
    const Dialogs::OpenPanel& panel = window.dialogs.openPanels[0];
    QCOMPARE(panel.title, QString("Select directory to extract to"));
    QVERIFY(!panel.chooseFiles);
    QVERIFY(panel.chooseFolders);
    QVERIFY(panel.canCreateFolders);
    QVERIFY(!panel.multipleSelection);
    QCOMPARE(window.control<QLineEdit>("backupFolderEditBox")->text(), folder);
    QCOMPARE(stored(kDefaultBackupDirectory), folder);

    window.control<QPushButton>("btnChooseBackupFolder")->click();
    QCOMPARE(window.dialogs.openPanels.size(), 2);
    QCOMPARE(window.dialogs.openPanels[1].startFolder, folder);
    QCOMPARE(window.control<QLineEdit>("backupFolderEditBox")->text(), folder);
    QCOMPARE(stored(kDefaultBackupDirectory), folder);
  }

  void associationSetsEveryTypeInOrder() {
    FakeToolRunner runner;
    QCOMPARE(FileAssociation::associate(runner), std::nullopt);
    compareRuns(runner.runs, expectedAssociationRuns());
    QCOMPARE(storedKeys(), QStringList());
  }

  void associationReachesTheDesktopsDefaults() {
    QTemporaryDir config, data;
    const ScopedEnvironment environment({{"XDG_CONFIG_HOME", config.path().toUtf8()},
                                         {"XDG_DATA_HOME", data.path().toUtf8()},
                                         {"XDG_CURRENT_DESKTOP", {}},
                                         {"DESKTOP_SESSION", {}},
                                         {"KDE_FULL_SESSION", {}},
                                         {"GNOME_DESKTOP_SESSION_ID", {}},
                                         {"MATE_DESKTOP_SESSION_ID", {}},
                                         {"DBUS_SESSION_BUS_ADDRESS", {}},
                                         {"DISPLAY", {}}});
    ProcessToolRunner runner;
    QCOMPARE(FileAssociation::associate(runner), std::nullopt);
    const std::map<QString, QString> defaults =
        defaultApplicationsIn(config.path() + "/mimeapps.list");
    for (const FakeToolRunner::Recorded& run : expectedAssociationRuns()) {
      const QString type = run.arguments.last();
      QVERIFY2(defaults.count(type), qPrintable(type));
      QCOMPARE(defaults.at(type), QString("quillet.desktop"));
    }
  }

  void withoutXdgMimeOneLineIsShownAndTheButtonIsDone() {
    QTemporaryDir emptyPath;
    QWidget owner;
    FakeDialogs dialogs;
    ProcessToolRunner runner;
    PreferencesClass controller(&owner, dialogs, runner, {});
    {
      const ScopedEnvironment environment({{"PATH", emptyPath.path().toUtf8()}});
      controller.windowPreferences()->findChild<QPushButton*>("btnAssociateNow")->click();
    }
    auto* button = controller.windowPreferences()->findChild<QPushButton*>("btnAssociateNow");
    auto* problem = controller.windowPreferences()->findChild<QLabel*>("associationProblem");
    QCOMPARE(button->text(), QString("Done"));
    QVERIFY(!button->isEnabled());
    QVERIFY(!problem->isHidden());
    QVERIFY2(problem->text().contains("xdg-mime"), qPrintable(problem->text()));
    QCOMPARE(stored(kIssupportedfilesassociatedonce), QString("YES"));
  }

  void thePreferencesButtonIsDoneUntilTheCloseButton() {
    Preferences window;
    QDialog* preferences = window.controller.windowPreferences();
    preferences->show();
    window.associateButton()->click();
    compareRuns(window.runner.runs, expectedAssociationRuns());
    QCOMPARE(window.associateButton()->text(), QString("Done"));
    QVERIFY(!window.associateButton()->isEnabled());
    QCOMPARE(stored(kIssupportedfilesassociatedonce), QString("YES"));
    QVERIFY(window.control<QLabel>("associationProblem")->isHidden());

    // Closed some other way, the window keeps the button as it was.
    preferences->reject();
    window.controller.btnClosePreferencesWindow();
    QCOMPARE(window.associateButton()->text(), QString("Done"));
    QVERIFY(!window.associateButton()->isEnabled());

    preferences->show();
    window.control<QPushButton>("btnClosePreferencesWindow")->click();
    QVERIFY(!preferences->isVisible());
    QCOMPARE(window.associateButton()->text(), QString("Associate now"));
    QVERIFY(window.associateButton()->isEnabled());
  }

  void theOneTimeWindowsCloseEndsTheOffer() {
    QWidget owner;
    FakeToolRunner runner;
    supportedFilesFirstTimeAssociation offer(&owner, runner);
    QVERIFY(!FileAssociation::wasOffered());
    offer.showFadedIn();
    QVERIFY(offer.mainWindow()->isVisible());
    QTRY_COMPARE(offer.mainWindow()->windowOpacity(), 1.0);
    offer.mainWindow()->findChild<QPushButton*>("btnClose")->click();
    QVERIFY(!offer.mainWindow()->isVisible());
    QCOMPARE(stored(kIssupportedfilesassociatedonce), QString("YES"));
    QVERIFY(FileAssociation::wasOffered());
    QVERIFY(runner.runs.isEmpty());
  }

  void theOneTimeWindowStaysUpAfterAssociating() {
    QWidget owner;
    FakeToolRunner runner;
    supportedFilesFirstTimeAssociation offer(&owner, runner);
    offer.showFadedIn();
    offer.associateNowButton()->click();
    compareRuns(runner.runs, expectedAssociationRuns());
    QVERIFY(offer.mainWindow()->isVisible());
    QCOMPARE(offer.associateNowButton()->text(), QString("Done"));
    QVERIFY(!offer.associateNowButton()->isEnabled());
    QCOMPARE(stored(kIssupportedfilesassociatedonce), QString("YES"));
  }

  void screenshots() {
    const QString shots = qEnvironmentVariable("QUILLET_SCREENSHOT_DIR");
    if (shots.isEmpty())
      QSKIP("no QUILLET_SCREENSHOT_DIR");
    QDir().mkpath(shots);
    store(kDefaultBackupDirectory, "/home/someone/Backups");
    Preferences window;
    window.controller.showStoredPreferences();
    QDialog* preferences = window.controller.windowPreferences();
    preferences->show();
    QVERIFY(QTest::qWaitForWindowExposed(preferences));
    const struct {
      void (PreferencesClass::*select)();
      int index;
      const char* name;
    } tabs[] = {
        {&PreferencesClass::toolBarBtnGeneral, 0, "general"},
        {&PreferencesClass::toolBarBtnBackup, 1, "backup"},
        {&PreferencesClass::toolBarBtnInternet, 2, "internet"},
        {&PreferencesClass::toolBarBtnMisc, 3, "misc"},
        {&PreferencesClass::toolBarBtnContextMenu, 4, "context-menu"},
        {&PreferencesClass::toolBarBtnDrop, 5, "drop"},
    };
    for (const auto& tab : tabs) {
      (window.controller.*tab.select)();
      QCOMPARE(window.controller.tabContainer()->currentIndex(), tab.index);
      QVERIFY(preferences->grab().save(shots + "/preferences-" + tab.name + ".png"));
    }

    supportedFilesFirstTimeAssociation offer(&window.owner, window.runner);
    offer.showFadedIn();
    QVERIFY(QTest::qWaitForWindowExposed(offer.mainWindow()));
    QVERIFY(offer.mainWindow()->grab().save(shots + "/first-time-association.png"));
  }
};

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  // What a desktop with an icon theme shows; offscreen has no theme paths.
  QIcon::setThemeSearchPaths(QIcon::themeSearchPaths() << QStringLiteral("/usr/share/icons"));
  QIcon::setThemeName(QStringLiteral("breeze"));
  PreferencesTest test;
  return QTest::qExec(&test, argc, argv);
}

#include "tst_preferences.moc"
