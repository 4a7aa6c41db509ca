#include "platform/QtDialogs.h"

#include <QApplication>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QMessageBox>
#include <QPushButton>

#include <cstdio>

namespace {

// Panels are shown a little translucent, as they were designed.
constexpr double kPanelOpacity = 0.95;

QString nameFilterFor(const QStringList& extensions) {
  if (extensions.isEmpty())
    return {};
  QStringList patterns;
  for (const QString& extension : extensions)
    patterns << QStringLiteral("*.") + extension;
  return QObject::tr("Archives (%1)").arg(patterns.join(u' '));
}

// Qt's file dialog picks files or folders, never both: this one takes the
// selection as it is, folders included, when Choose is pressed. A double
// click still opens a folder.
class FilesAndFoldersDialog : public QFileDialog {
 public:
  using QFileDialog::QFileDialog;

  void accept() override {
    const QStringList chosen = selectedFiles();
    const bool allExist = std::all_of(chosen.cbegin(), chosen.cend(),
                                      [](const QString& path) { return QFileInfo::exists(path); });
    if (chosen.isEmpty() || !allExist || chosen == QStringList{directory().absolutePath()}) {
      QFileDialog::accept();
      return;
    }
    QDialog::accept();
  }
};

// Long paths break after a "/" rather than in the middle of a name.
QString wrappableAtSeparators(QString text) {
  text.replace(u'/', QStringLiteral("/\u200B"));
  return text;
}

constexpr int kAlertMinimumWidth = 420;

}  // namespace

bool QtDialogs::platformIsUnattended() {
  const QString platform = QGuiApplication::platformName();
  return platform == u"offscreen" || platform == u"minimal";
}

void QtDialogs::alert(const QString& title, const QString& message, const QString& button) {
  show(QMessageBox::Warning, title, message, button);
}

void QtDialogs::notify(const QString& title, const QString& message, const QString& button) {
  show(QMessageBox::Information, title, message, button);
}

bool QtDialogs::ask(const QString& title, const QString& message, const QString& answer) {
  if (unattended_)
    return false;
  QMessageBox box(QApplication::activeWindow());
  box.setWindowTitle(title);
  box.setText(title);
  box.setInformativeText(wrappableAtSeparators(message));
  box.setIcon(QMessageBox::Question);
  QPushButton* yes = box.addButton(answer, QMessageBox::AcceptRole);
  box.addButton(QMessageBox::Cancel);
  box.setDefaultButton(yes);
  box.exec();
  return box.clickedButton() == yes;
}

void QtDialogs::show(int icon, const QString& title, const QString& message,
                     const QString& button) {
  if (unattended_) {
    std::fprintf(stderr, "quillet: %s: %s\n", qUtf8Printable(title), qUtf8Printable(message));
    return;
  }
  QMessageBox box(QApplication::activeWindow());
  box.setWindowTitle(title);
  box.setText(title);
  box.setInformativeText(wrappableAtSeparators(message));
  box.setIcon(static_cast<QMessageBox::Icon>(icon));
  box.addButton(button.isEmpty() ? QStringLiteral("OK") : button, QMessageBox::AcceptRole);
  // Wide enough that titles are not cut short.
  if (auto* grid = qobject_cast<QGridLayout*>(box.layout()))
    grid->addItem(new QSpacerItem(kAlertMinimumWidth, 0, QSizePolicy::Minimum), grid->rowCount(), 0,
                  1, grid->columnCount());
  box.exec();
}

QStringList QtDialogs::chooseToOpen(QWidget* parent, const OpenPanel& panel) {
  if (unattended_)
    return {};
  FilesAndFoldersDialog dialog(parent, panel.title, panel.startFolder,
                               nameFilterFor(panel.extensions));
  if (panel.chooseFiles && panel.chooseFolders) {
    dialog.setOption(QFileDialog::DontUseNativeDialog, true);
    dialog.setLabelText(QFileDialog::Accept, QObject::tr("Choose"));
  }
  dialog.setWindowOpacity(kPanelOpacity);
  dialog.setAcceptMode(QFileDialog::AcceptOpen);
  if (panel.chooseFolders && !panel.chooseFiles)
    dialog.setFileMode(QFileDialog::Directory);
  else if (panel.multipleSelection)
    dialog.setFileMode(QFileDialog::ExistingFiles);
  else
    dialog.setFileMode(QFileDialog::ExistingFile);
  if (!panel.canCreateFolders)
    dialog.setOption(QFileDialog::ReadOnly, true);
  if (dialog.exec() != QDialog::Accepted)
    return {};
  return dialog.selectedFiles();
}

QString QtDialogs::chooseToSave(QWidget* parent, const SavePanel& panel) {
  if (unattended_)
    return {};
  QFileDialog dialog(parent, panel.title, panel.startFolder);
  dialog.setWindowOpacity(kPanelOpacity);
  dialog.setAcceptMode(QFileDialog::AcceptSave);
  dialog.selectFile(panel.fileName);
  if (dialog.exec() != QDialog::Accepted)
    return {};
  return dialog.selectedFiles().value(0);
}
