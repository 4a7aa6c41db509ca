#include "tools/converter.h"

#include "create/JobSettings.h"
#include "engine/ArchiveOpener.h"
#include "engine/ArchiveType.h"
#include "engine/LiteralNames.h"
#include "engine/MainWindowUi.h"
#include "engine/OwnTemporaryFolder.h"
#include "engine/PathText.h"
#include "engine/ToolProblem.h"
#include "platform/Dialogs.h"
#include "platform/ResourceIcons.h"
#include "platform/WindowPlacement.h"
#include "tools/ConverterWindow.h"

#include <QAbstractButton>
#include <QDir>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMainWindow>
#include <QProgressBar>
#include <QPushButton>

namespace {

constexpr int kIconSize = 64;

struct Target {
  const QString& method;
  const char* icon;
  QAbstractButton* (ConverterWindow::*button)() const;
};

const Target kTargets[] = {
    {JobSettings::kZip, "zip.icns", &ConverterWindow::zipButton},
    {JobSettings::kSevenZip, "7z.icns", &ConverterWindow::sevenZipButton},
    {JobSettings::kRar, "rar.icns", &ConverterWindow::rarButton},
};

}  // namespace

converter::converter(const EngineContext& context, QObject* parent)
    : QObject(parent),
      context_(context),
      window_(new ConverterWindow(context.ui.sourceArchive4ConvertionIcon, context.ui.mainWindow)) {
  const MainWindowUi& ui = context.ui;
  // The window always names the archive open in the main window.
  window_->archivePath()->setText(ui.filepath->text());
  window_->archiveType()->setText(ui.archivetype->text());
  connect(ui.filepath, &QLineEdit::textChanged, window_->archivePath(), &QLineEdit::setText);
  connect(ui.archivetype, &QLineEdit::textChanged, window_->archiveType(), &QLineEdit::setText);
  connect(window_->zipButton(), &QAbstractButton::clicked, this, &converter::dropZip);
  connect(window_->sevenZipButton(), &QAbstractButton::clicked, this, &converter::drop7z);
  connect(window_->rarButton(), &QAbstractButton::clicked, this, &converter::dropRAR);
  connect(window_->convertButton(), &QPushButton::clicked, this, &converter::btnConvert);
  connect(window_->closeButton(), &QPushButton::clicked, this, &converter::btnClose);
  connect(window_, &ConverterWindow::cancelRequested, this, [this] {
    cancelled_ = true;
    context_.runner.cancel();
  });
}

void converter::centreAndShow() {
  // The create tab may have chosen another format since.
  window_->iconConverted()->clear();
  window_->showTarget(nullptr);
  chooseTarget(JobSettings::shared().compressionMethod);
  window_->statusLine()->clear();
  // The password that opened the archive opens it here too.
  const bool encrypted = context_.opener.archive().encrypted;
  window_->passwordTextField()->setText(encrypted ? context_.passwordFieldText() : QString());
  WindowPlacement::centreAndShow(window_);
}

void converter::dropZip() {
  chooseTarget(JobSettings::kZip);
}

void converter::drop7z() {
  chooseTarget(JobSettings::kSevenZip);
}

void converter::dropRAR() {
  chooseTarget(JobSettings::kRar);
}

void converter::chooseTarget(const QString& method) {
  for (const Target& target : kTargets) {
    if (target.method == method) {
      window_->iconConverted()->setPixmap(
          ResourceIcons::named(QString::fromLatin1(target.icon)).pixmap(kIconSize));
      window_->showTarget((window_->*target.button)());
    }
  }
  // The create tab's next archive takes the same format.
  JobSettings::shared().compressionMethod = method;
}

void converter::btnConvert() {
  const QString path = window_->archivePath()->text();
  if (path.isEmpty())
    return;
  if (!OwnTemporaryFolder::ensure()) {
    context_.dialogs.alert(OwnTemporaryFolder::unusableTitle(),
                           OwnTemporaryFolder::unusableMessage(), QStringLiteral("OK"));
    return;
  }
  const QString folder = ConversionCommands::temporaryFolder(path);
  // What an earlier conversion left there is not this archive's.
  QDir(folder).removeRecursively();
  QDir().mkpath(folder);

  cancelled_ = false;
  window_->setBusy(true);
  QProgressBar* phase = window_->phaseLoadingIndicator();
  phase->setValue(1);
  if (!extract(window_->archiveType()->text(), folder)) {
    finish(folder);
    return;
  }
  phase->setValue(2);

  const std::optional<ConversionCommands::Step> packing = ConversionCommands::packing(
      JobSettings::shared().compressionMethod, path, window_->passwordTextField()->text(), folder);
  if (!packing) {
    window_->setBusy(false);
    context_.dialogs.alert(
        QStringLiteral("Please select archive type to convert to."),
        QStringLiteral("Please select new archive type to convert the old one to."),
        QStringLiteral("OK"));
    return;
  }
  pack(*packing);
  finish(folder);
}

bool converter::extract(const QString& type, const QString& folder) {
  if (type == ArchiveType::Zip || type == ArchiveType::SevenZip || type == ArchiveType::Tar)
    return extractWith7z(folder);
  if (type == ArchiveType::Rar)
    return extractWithRar(folder);
  if (type == ArchiveType::Lha)
    return extractWithLHA(folder);
  if (type == ArchiveType::Arj)
    return extractWithARJ(folder);
  if (ArchiveType::isCompressedTar(type))
    return extractWith(type, folder);
  // Other types are not extracted: the new archive packs an empty folder.
  return true;
}

bool converter::extractWith7z(const QString& folder) {
  return extractWith(ArchiveType::SevenZip, folder);
}

bool converter::extractWithRar(const QString& folder) {
  return extractWith(ArchiveType::Rar, folder);
}

bool converter::extractWithLHA(const QString& folder) {
  return extractWith(ArchiveType::Lha, folder);
}

bool converter::extractWithARJ(const QString& folder) {
  return extractWith(ArchiveType::Arj, folder);
}

bool converter::extractWith(const QString& type, const QString& folder) {
  const std::optional<ConversionCommands::Step> step = ConversionCommands::extraction(
      type, window_->archivePath()->text(), window_->passwordTextField()->text(), folder);
  if (!step)
    return true;
  showStatus(tr("Extracting %1…").arg(PathText::lastPathComponent(window_->archivePath()->text())));
  window_->loadingIndicator()->show();
  const bool extracted = runStep(*step);
  window_->loadingIndicator()->hide();
  return extracted;
}

void converter::pack(const ConversionCommands::Step& packing) {
  const QString archive = ConversionCommands::packedArchive(packing);
  const bool existed = QFileInfo::exists(archive);
  showStatus(tr("Packing %1…").arg(PathText::lastPathComponent(archive)));
  if (runStep(packing)) {
    showStatus(tr("Converted into %1.").arg(archive));
    return;
  }
  // A new archive the tool did not finish is no archive at all.
  if (!existed)
    QFile::remove(archive);
}

bool converter::runStep(const ConversionCommands::Step& step) {
  const QString unsafe = LiteralNames::firstUnsafe(step.run.program, step.names);
  if (!unsafe.isEmpty()) {
    const LiteralNames::Refusal refusal = LiteralNames::refusalOf(unsafe);
    context_.dialogs.alert(refusal.title, refusal.message, QStringLiteral("OK"));
    showStatus(tr("Nothing was converted."));
    return false;
  }
  ToolRun run = step.run;
  // Cancel is the only button that acts: the window is modal.
  run.acceptsUserInput = true;
  const ToolResult result = context_.runner.run(run);
  if (cancelled_) {
    showStatus(tr("Conversion cancelled."));
    return false;
  }
  const std::optional<ToolProblem> problem = ToolProblem::of(run, result);
  if (!problem)
    return true;
  showStatus(problem->message);
  if (problem->kind == ToolProblem::Kind::MissingProgram) {
    context_.dialogs.alert(tr("Missing program"), problem->message, QStringLiteral("OK"));
  } else if (ConversionCommands::saysWrongPassword(
                 QString::fromUtf8(result.output + result.errors))) {
    context_.dialogs.alert(tr("Wrong password"),
                           tr("The password does not open the archive. Nothing was converted."),
                           QStringLiteral("OK"));
  }
  return false;
}

void converter::finish(const QString& folder) {
  QDir(folder).removeRecursively();
  // The tools ran in the folder just deleted.
  QDir::setCurrent(PathText::deletingLastPathComponent(window_->archivePath()->text()));
  window_->phaseLoadingIndicator()->setValue(0);
  window_->setBusy(false);
}

void converter::btnClose() {
  window_->hide();
}

void converter::showStatus(const QString& text) {
  window_->statusLine()->setText(text);
}
