#include "app/UpdateClass.h"

#include "app/WebAddresses.h"
#include "platform/Desktop.h"
#include "platform/Dialogs.h"
#include "platform/HttpText.h"
#include "platform/ObjectNames.h"
#include "platform/PreferenceKeys.h"
#include "platform/ResourceIcons.h"
#include "platform/WindowPlacement.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace {

using namespace PreferenceKeys;

// Both fetches of one check together wait no longer than this, so that an
// unreachable server delays the main window by less than five seconds.
constexpr int kCheckTimeoutMs = 4500;

}  // namespace

UpdateClass::UpdateClass(Dialogs& dialogs, Desktop& desktop, QWidget* parent)
    : QObject(parent),
      dialogs_(dialogs),
      desktop_(desktop),
      updateWindow_(named(new QDialog(parent), "updateWindow")),
      versionNumber_(named(new QLabel, "versionNumber")),
      installedVersion_(named(new QLabel, "installedVersion")),
      textField_(named(new QPlainTextEdit, "textField")),
      downloadBtn_(
          named(new QPushButton(QIcon::fromTheme(QStringLiteral("download")), tr("Download")),
                "downloadBtn")),
      chkBoxAutoUpdate_(named(new QCheckBox(tr("Check for a new version when Quillet starts")),
                              "chkBoxAutoUpdate")) {
  updateWindow_->setWindowTitle(tr("Quillet Update"));
  textField_->setReadOnly(true);
  textField_->setMinimumSize(420, 180);

  auto* icon = new QLabel;
  const int side = updateWindow_->style()->pixelMetric(QStyle::PM_LargeIconSize);
  icon->setPixmap(
      ResourceIcons::themed(QStringLiteral("system-software-update"), QStringLiteral("quillet"))
          .pixmap(side, side));
  icon->setAlignment(Qt::AlignTop);
  QFont bold = versionNumber_->font();
  bold.setBold(true);
  versionNumber_->setFont(bold);
  auto* versions = new QVBoxLayout;
  versions->addWidget(versionNumber_);
  versions->addWidget(installedVersion_);
  auto* header = new QHBoxLayout;
  header->addWidget(icon);
  header->addLayout(versions, 1);

  auto* buttons = new QDialogButtonBox;
  QPushButton* close = named(buttons->addButton(QDialogButtonBox::Close), "btnClose");
  buttons->addButton(downloadBtn_, QDialogButtonBox::AcceptRole);
  downloadBtn_->setDefault(true);
  connect(close, &QPushButton::clicked, this, &UpdateClass::btnClose);
  connect(downloadBtn_, &QPushButton::clicked, this, &UpdateClass::btnDownload);
  connect(chkBoxAutoUpdate_, &QCheckBox::clicked, this, &UpdateClass::chkAutoUpdate);
  connect(updateWindow_, &QDialog::rejected, this, &UpdateClass::btnClose);

  auto* layout = new QVBoxLayout(updateWindow_);
  layout->addLayout(header);
  layout->addWidget(new QLabel(tr("What is new:")));
  layout->addWidget(textField_, 1);
  layout->addWidget(chkBoxAutoUpdate_);
  layout->addWidget(buttons);
}

QUrl UpdateClass::updateFile(const QString& name) {
  QString folder = WebAddresses::updateFolder();
  if (!folder.endsWith(u'/'))
    folder += u'/';
  return QUrl(folder).resolved(QUrl(name));
}

void UpdateClass::awakeFromNib() {
  // The key is only read here; an absent or unknown text means on.
  const bool off = PreferencesStore::text(kAutoCheckForNewVersion) == kNo;
  if (!off)
    CheckForNewVersion();
  chkBoxAutoUpdate_->setChecked(!off);
}

void UpdateClass::CheckForNewVersion() {
  const QDeadlineTimer deadline(kCheckTimeoutMs);
  const std::optional<QString> newest =
      HttpText::fetch(updateFile(QStringLiteral("currentversion.txt")), deadline);
  // Compared whole, as text: any difference is an update.
  if (!newest || *newest == QCoreApplication::applicationVersion())
    return;
  showUpdate(*newest, deadline, true);
}

void UpdateClass::mnuLatestVersionChanges() {
  const QDeadlineTimer deadline(kCheckTimeoutMs);
  const std::optional<QString> newest =
      HttpText::fetch(updateFile(QStringLiteral("currentversion.txt")), deadline);
  if (!newest) {
    dialogs_.alert(QStringLiteral("No internet connection."),
                   QStringLiteral("Can not get the latest update changes due to no internet "
                                  "connection available."),
                   QStringLiteral("OK"));
    return;
  }
  showUpdate(*newest, deadline, false);
}

void UpdateClass::showUpdate(const QString& newest, const QDeadlineTimer& deadline,
                             bool offerDownload) {
  showVersions(newest);
  showNotes(HttpText::fetch(updateFile(QStringLiteral("updatechanges.txt")), deadline)
                .value_or(QString()));
  downloadBtn_->setEnabled(offerDownload);
  WindowPlacement::centreAndShow(updateWindow_);
}

void UpdateClass::showVersions(const QString& newest) {
  versionNumber_->setText(QStringLiteral("New: v") + newest);
  installedVersion_->setText(QStringLiteral("Installed: v") +
                             QCoreApplication::applicationVersion());
}

void UpdateClass::showNotes(const QString& notes) {
  textField_->setPlainText(notes.isEmpty() ? QStringLiteral("No information available.") : notes);
}

void UpdateClass::btnDownload() {
  desktop_.openUrl(updateFile(QStringLiteral("Quillet.zip")));
}

void UpdateClass::btnClose() {
  updateWindow_->hide();
}

void UpdateClass::chkAutoUpdate() {
  PreferencesStore::setYes(kAutoCheckForNewVersion, chkBoxAutoUpdate_->isChecked());
  emit autoCheckChanged(chkBoxAutoUpdate_->isChecked());
}
