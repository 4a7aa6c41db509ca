#include "app/AppController.h"
#include "app/Engine.h"
#include "app/HeadlessListing.h"
#include "app/UpdateClass.h"
#include "platform/ProcessToolRunner.h"
#include "platform/QtDesktop.h"
#include "platform/QtDialogs.h"
#include "platform/ResourceIcons.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QIcon>
#include <QMainWindow>
#include <QTimer>

#include <memory>

namespace {

struct CommandLine {
  bool list = false;
  QString password;
  QStringList files;
};

void describe(QCommandLineParser& parser) {
  parser.setApplicationDescription(QStringLiteral(
      "Quillet, an archive manager.\n\n"
      "quillet opens the window; quillet FILE... extracts archives beside themselves, or packs\n"
      "other files into one archive, and quits.\n"
      "quillet --list [--password TEXT] ARCHIVE opens ARCHIVE as the window would and prints\n"
      "one line per entry, the fields Name, OriginalSize, PackedSize, CRC32 and DateModified\n"
      "separated by tabs. Exit status: 0 listed (a type that lists nothing prints nothing),\n"
      "2 the archive is missing or unreadable,\n"
      "3 the archive is protected and no password was given, 4 a program it needs is missing."));
  parser.addHelpOption();
  parser.addVersionOption();
  parser.addOption(
      {QStringLiteral("list"), QStringLiteral("Print the entries of ARCHIVE and quit.")});
  parser.addOption({QStringLiteral("password"),
                    QStringLiteral("The password of a protected archive."),
                    QStringLiteral("TEXT")});
  parser.addPositionalArgument(
      QStringLiteral("files"),
      QStringLiteral("Archives to extract, or files to pack into one archive."),
      QStringLiteral("[FILE...]"));
}

CommandLine parse(const QCoreApplication& application) {
  QCommandLineParser parser;
  describe(parser);
  parser.process(application);
  CommandLine line;
  line.list = parser.isSet(QStringLiteral("list"));
  if (parser.isSet(QStringLiteral("password")))
    line.password = parser.value(QStringLiteral("password"));
  line.files = parser.positionalArguments();
  if (line.list && line.files.size() != 1)
    parser.showHelp(2);
  return line;
}

// The listing, the help and the version need no display.
bool runsWithoutWindow(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    for (const char* option : {"--list", "--help", "-h", "--help-all", "--version", "-v"}) {
      if (qstrcmp(argv[i], option) == 0)
        return true;
    }
  }
  return false;
}

void setIdentity() {
  QCoreApplication::setOrganizationName(QStringLiteral("Quillet"));
  QCoreApplication::setApplicationName(QStringLiteral("Quillet"));
  QCoreApplication::setApplicationVersion(QStringLiteral(QUILLET_VERSION));
}

int listHeadless(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  setIdentity();
  const CommandLine line = parse(application);
  ProcessToolRunner runner;
  HeadlessListing listing(runner);
  return listing.run(line.files.first(), line.password);
}

int runWindow(int argc, char** argv) {
  QApplication application(argc, argv);
  setIdentity();
  QApplication::setDesktopFileName(QStringLiteral("quillet"));
  QIcon::setFallbackThemeName(QStringLiteral("breeze"));
  QApplication::setWindowIcon(ResourceIcons::named(QStringLiteral("quillet")));
  const CommandLine line = parse(application);

  ProcessToolRunner runner;
  ProcessToolRunner jobRunner;
  const bool unattended = QtDialogs::platformIsUnattended();
  QtDialogs dialogs(unattended);
  QtDesktop desktop;
  Engine engine(runner, jobRunner, dialogs, desktop);
  AppController controller(
      engine, {runner, dialogs, desktop, [] { QCoreApplication::quit(); }, unattended});
  controller.awakeFromNib();
  // Before the window fades in, as the interface loads; without a display
  // nobody would see what it finds.
  if (!unattended)
    controller.updates()->awakeFromNib();
  controller.applicationDidFinishLaunching();
  if (!line.files.isEmpty()) {
    QStringList openFiles;
    for (const QString& file : line.files)
      openFiles << QFileInfo(file).absoluteFilePath();
    QTimer::singleShot(0, &controller, [&controller, &application, openFiles] {
      controller.application(&application, openFiles);
    });
  }
  return application.exec();
}

}  // namespace

int main(int argc, char** argv) {
  if (runsWithoutWindow(argc, argv))
    return listHeadless(argc, argv);
  return runWindow(argc, argv);
}
