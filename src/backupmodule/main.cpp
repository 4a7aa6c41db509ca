// The restore application: run from inside a backup's bundle, it puts the
// backed-up folders back into the home folder.

#include "backupmodule/Restore.h"
#include "bundled/BundledProgram.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTextStream>

#include <unistd.h>

#include <cstdio>
#include <memory>
#include <optional>

namespace {

struct BackupBundle {
  QString root;

  QString name() const { return QFileInfo(root).fileName(); }
  QString resources() const { return root + QStringLiteral("/Contents/Resources"); }
};

std::optional<BackupBundle> bundleOfThisProgram() {
  const std::optional<QString> root = BundledProgram::bundleRoot();
  return root ? std::optional(BackupBundle{*root}) : std::nullopt;
}

// The "archive" file names the archive beside it. Only a plain name counts.
std::optional<QString> archiveOf(const BackupBundle& bundle) {
  const QString name = BundledProgram::readText(bundle.resources() + QStringLiteral("/archive"))
                           .value_or(QString())
                           .trimmed();
  if (name.isEmpty() || name.contains(u'/') || name == u"." || name == u"..")
    return std::nullopt;
  const QString path = bundle.resources() + u'/' + name;
  if (!QFileInfo(path).isFile())
    return std::nullopt;
  return path;
}

QString question(const BackupBundle& bundle, const QString& home) {
  return QStringLiteral(
             "Restore the backup %1 into %2?\nFiles there that are newer than the backup's "
             "copies are kept; older ones are replaced.")
      .arg(bundle.name(), QDir::toNativeSeparators(home));
}

QString keptReport(const RestoreResult& result) {
  if (result.kept.isEmpty())
    return {};
  return QStringLiteral(
             "%1 file(s) of the home folder were kept because they are newer than "
             "the backup's copies (or a folder stands in their place):\n  %2")
      .arg(result.kept.size())
      .arg(result.kept.join(QStringLiteral("\n  ")));
}

bool confirmedOnTerminal(const BackupBundle& bundle, const QString& home) {
  QTextStream out(stdout);
  if (!isatty(STDIN_FILENO)) {
    QTextStream(stderr) << "backupmodule: nobody to ask; run with --yes to restore without "
                           "asking\n";
    return false;
  }
  out << question(bundle, home) << " [y/N] " << Qt::flush;
  QTextStream in(stdin);
  const QString answer = in.readLine().trimmed().toLower();
  return answer == u"y" || answer == u"yes";
}

int runAsText(const BackupBundle& bundle, const QString& archive, const QString& home,
              bool confirmed) {
  if (!confirmed && !confirmedOnTerminal(bundle, home))
    return 1;
  QTextStream out(stdout);
  out << "Restoring " << bundle.name() << " into " << home << Qt::endl;
  const RestoreResult result =
      restoreBackup(archive, home, [](QProcess& tool) { tool.waitForFinished(-1); });
  out << "Restored " << result.restoredFiles << " file(s)." << Qt::endl;
  if (!result.kept.isEmpty())
    out << keptReport(result) << Qt::endl;
  if (!result.succeeded) {
    QTextStream(stderr) << "backupmodule: " << result.error << '\n';
    return 1;
  }
  return 0;
}

int runWithWindows(const BackupBundle& bundle, const QString& archive, const QString& home,
                   bool confirmed) {
  const QString title = bundle.name();
  if (!confirmed) {
    QMessageBox ask(QMessageBox::Question, title, question(bundle, home));
    ask.setTextFormat(Qt::PlainText);
    QPushButton* restore = ask.addButton(QStringLiteral("Restore"), QMessageBox::AcceptRole);
    ask.addButton(QMessageBox::Cancel);
    ask.setDefaultButton(restore);
    ask.exec();
    if (ask.clickedButton() != restore)
      return 1;
  }
  const RestoreResult result = restoreBackup(archive, home, [&title](QProcess& tool) {
    BundledProgram::waitShowingProgress(tool, title, QStringLiteral("Restoring…"));
  });
  QMessageBox report(result.succeeded ? QMessageBox::Information : QMessageBox::Critical, title,
                     result.succeeded
                         ? QStringLiteral("Restored %1 file(s) into %2.")
                               .arg(result.restoredFiles)
                               .arg(QDir::toNativeSeparators(home))
                         : QStringLiteral("The backup was not fully restored:\n") + result.error);
  report.setTextFormat(Qt::PlainText);
  if (!result.kept.isEmpty()) {
    report.setInformativeText(
        QStringLiteral("%1 newer file(s) were kept; see the details.").arg(result.kept.size()));
    report.setDetailedText(keptReport(result));
  }
  report.exec();
  return result.succeeded ? 0 : 1;
}

}  // namespace

int main(int argc, char* argv[]) {
  const bool withWindows = BundledProgram::displayAvailable();
  const std::unique_ptr<QCoreApplication> application =
      BundledProgram::make(argc, argv, withWindows);

  QCommandLineParser parser;
  parser.setApplicationDescription(QStringLiteral(
      "Restores the home-folder backup inside this bundle into the home folder. Files there\n"
      "that are newer than the backup's copies are kept and listed."));
  parser.addHelpOption();
  const QCommandLineOption yes(QStringLiteral("yes"), QStringLiteral("Restore without asking."));
  parser.addOption(yes);
  parser.process(*application);

  const std::optional<BackupBundle> bundle = bundleOfThisProgram();
  const std::optional<QString> archive = bundle ? archiveOf(*bundle) : std::nullopt;
  if (!archive) {
    QTextStream(stderr) << "backupmodule: no backup found; this program must run from "
                           "<bundle>/Contents/MacOS beside Contents/Resources/archive\n";
    return 1;
  }
  const QString home = QDir::homePath();
  return withWindows ? runWithWindows(*bundle, *archive, home, parser.isSet(yes))
                     : runAsText(*bundle, *archive, home, parser.isSet(yes));
}
