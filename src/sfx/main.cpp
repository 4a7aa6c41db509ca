// The self-extracting stub: run from inside its bundle, it extracts the bundled
// archive into the folder that holds the bundle.

#include "bundled/BundledProgram.h"
#include "sfx/Extraction.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QInputDialog>
#include <QMessageBox>
#include <QProcess>
#include <QPushButton>
#include <QTextStream>

#include <memory>
#include <optional>

namespace {

struct StubBundle {
  QString root;

  QString name() const { return QFileInfo(root).fileName(); }
  QString destination() const { return QFileInfo(root).absolutePath(); }
  QString archive() const { return root + "/Contents/Resources/archive"; }
  QString notesFile() const { return root + "/Contents/Resources/notes.txt"; }
};

std::optional<StubBundle> bundleOfThisProgram() {
  const std::optional<QString> root = BundledProgram::bundleRoot();
  return root ? std::optional(StubBundle{*root}) : std::nullopt;
}

const QString kMissingTool = "7z was not found; install the Debian package p7zip-full";

int runAsText(const StubBundle& bundle, const QString& password) {
  QTextStream out(stdout);
  QTextStream errors(stderr);
  const QString notes = BundledProgram::readText(bundle.notesFile()).value_or(QString());
  if (!notes.trimmed().isEmpty())
    out << notes.trimmed() << "\n\n";
  out << "Extracting the files of " << bundle.name() << " into " << bundle.destination()
      << Qt::endl;

  const ExtractionResult result = extractArchive(bundle.archive(), bundle.destination(), password,
                                                 [](QProcess& tool) { tool.waitForFinished(-1); });
  switch (result.outcome) {
    case ExtractionOutcome::Succeeded:
      out << "Done." << Qt::endl;
      return 0;
    case ExtractionOutcome::NeedsPassword:
      errors << "sfxmodule: the archive is protected; run again with --password TEXT\n";
      break;
    case ExtractionOutcome::WrongPassword:
      errors << "sfxmodule: wrong password\n";
      break;
    case ExtractionOutcome::ToolMissing:
      errors << "sfxmodule: " << kMissingTool << '\n';
      break;
    case ExtractionOutcome::Failed:
      errors << "sfxmodule: extraction failed: " << result.details.simplified() << '\n';
      break;
  }
  return 1;
}

void showMessage(QMessageBox::Icon icon, const QString& title, const QString& text) {
  QMessageBox box(icon, title, text, QMessageBox::Ok);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

bool confirmExtraction(const StubBundle& bundle) {
  QMessageBox box(QMessageBox::Question, bundle.name(),
                  QString("Extract the files of %1 into %2?")
                      .arg(bundle.name(), QDir::toNativeSeparators(bundle.destination())));
  box.setTextFormat(Qt::PlainText);
  QPushButton* extract = box.addButton("Extract", QMessageBox::AcceptRole);
  box.addButton(QMessageBox::Cancel);
  box.setDefaultButton(extract);
  box.exec();
  return box.clickedButton() == extract;
}

int runWithWindows(const StubBundle& bundle, QString password) {
  const QString title = bundle.name();
  const QString notes = BundledProgram::readText(bundle.notesFile()).value_or(QString());
  if (!notes.trimmed().isEmpty())
    showMessage(QMessageBox::Information, title, notes.trimmed());
  if (!confirmExtraction(bundle))
    return 1;

  const auto wait = [&title](QProcess& tool) {
    BundledProgram::waitShowingProgress(tool, title, "Extracting…");
  };
  for (;;) {
    const ExtractionResult result =
        extractArchive(bundle.archive(), bundle.destination(), password, wait);
    switch (result.outcome) {
      case ExtractionOutcome::Succeeded:
        showMessage(QMessageBox::Information, title,
                    QString("The files were extracted into %1.")
                        .arg(QDir::toNativeSeparators(bundle.destination())));
        return 0;
      case ExtractionOutcome::NeedsPassword:
      case ExtractionOutcome::WrongPassword: {
        const QString question = result.outcome == ExtractionOutcome::WrongPassword
                                     ? "The password is wrong. Try again:"
                                     : "The archive is protected. Password:";
        bool given = false;
        password = QInputDialog::getText(nullptr, title, question, QLineEdit::Password, {}, &given);
        if (!given)
          return 1;
        break;
      }
      case ExtractionOutcome::ToolMissing:
        showMessage(QMessageBox::Critical, title, kMissingTool + '.');
        return 1;
      case ExtractionOutcome::Failed:
        showMessage(QMessageBox::Critical, title, "The extraction failed:\n" + result.details);
        return 1;
    }
  }
}

}  // namespace

int main(int argc, char* argv[]) {
  const bool withWindows = BundledProgram::displayAvailable();
  const std::unique_ptr<QCoreApplication> application =
      BundledProgram::make(argc, argv, withWindows);

  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Extracts the archive inside this bundle into the folder that holds the bundle.");
  parser.addHelpOption();
  const QCommandLineOption passwordOption("password", "Password of a protected archive.", "TEXT");
  parser.addOption(passwordOption);
  parser.process(*application);

  const std::optional<StubBundle> bundle = bundleOfThisProgram();
  if (!bundle || !QFileInfo(bundle->archive()).isFile()) {
    QTextStream(stderr) << "sfxmodule: no archive found; this program must run from "
                           "<bundle>/Contents/MacOS beside Contents/Resources/archive\n";
    return 1;
  }
  const QString password = parser.value(passwordOption);
  return withWindows ? runWithWindows(*bundle, password) : runAsText(*bundle, password);
}
