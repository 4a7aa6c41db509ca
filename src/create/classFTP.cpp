#include "create/classFTP.h"

#include "create/FtpCommands.h"
#include "create/FtpVerdict.h"
#include "engine/ToolProblem.h"
#include "platform/Dialogs.h"
#include "platform/FormButtons.h"
#include "platform/ObjectNames.h"
#include "platform/PreferenceKeys.h"
#include "platform/WindowPlacement.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

using namespace PreferenceKeys;

}  // namespace

classFTP::classFTP(ToolRunner& runner, Dialogs& dialogs, QWidget* parent)
    : QObject(parent), runner_(runner), dialogs_(dialogs) {
  buildSettingsWindow();
  buildNewDirWindow();
}

void classFTP::buildSettingsWindow() {
  ftpSettingsWindow_ = named(new QDialog(qobject_cast<QWidget*>(parent())), "ftpSettingsWindow");
  ftpSettingsWindow_->setWindowTitle(tr("FTP Settings"));
  ftpSettingsWindow_->setWindowFlag(Qt::WindowStaysOnTopHint);
  ftpAddressBox_ = named(new QLineEdit, "ftpAddressBox");
  ftpAddressBox_->setPlaceholderText(QStringLiteral("ftp://ftp.example.com/uploads/"));
  ftpAddressBox_->setMinimumWidth(320);
  ftpUserNameBox_ = named(new QLineEdit, "ftpUserNameBox");
  ftpPasswordBox_ = named(new QLineEdit, "ftpPasswordBox");
  ftpPasswordBox_->setEchoMode(QLineEdit::Password);
  ftpTestLoadingIndicator_ = named(new QProgressBar, "ftpTestLoadingIndicator");
  ftpTestLoadingIndicator_->setRange(0, 0);
  ftpTestLoadingIndicator_->setTextVisible(false);
  ftpTestLoadingIndicator_->setMaximumHeight(8);
  // Kept in the layout while hidden, so the window does not jump.
  QSizePolicy keepSpace = ftpTestLoadingIndicator_->sizePolicy();
  keepSpace.setRetainSizeWhenHidden(true);
  ftpTestLoadingIndicator_->setSizePolicy(keepSpace);
  ftpTestLoadingIndicator_->hide();

  auto* hint = new QLabel(tr("A folder on the server must end with \"/\"."));
  hint->setEnabled(false);
  auto* fields = new QFormLayout;
  fields->addRow(tr("Server address:"), ftpAddressBox_);
  fields->addRow(QString(), hint);
  fields->addRow(tr("User name:"), ftpUserNameBox_);
  fields->addRow(tr("Password:"), ftpPasswordBox_);

  auto* test =
      named(new QPushButton(QIcon::fromTheme(QStringLiteral("network-connect")), tr("Test Login")),
            "btnTest");
  auto* createDirectory =
      named(new QPushButton(QIcon::fromTheme(QStringLiteral("folder-new")), tr("New Folder…")),
            "btnCreateFTPDirectory");
  auto* serverActions = new QHBoxLayout;
  serverActions->addWidget(test);
  serverActions->addWidget(createDirectory);
  serverActions->addStretch(1);
  auto* buttons = new QDialogButtonBox;
  QPushButton* cancel = named(buttons->addButton(QDialogButtonBox::Cancel), "btnCancel");
  QPushButton* save = named(buttons->addButton(QDialogButtonBox::Save), "btnSave");
  save->setDefault(true);
  connect(test, &QPushButton::clicked, this, &classFTP::btnTest);
  connect(createDirectory, &QPushButton::clicked, this, &classFTP::btnCreateFTPDirectory);
  connect(cancel, &QPushButton::clicked, this, &classFTP::btnCancel);
  connect(save, &QPushButton::clicked, this, &classFTP::btnSave);
  connect(ftpSettingsWindow_, &QDialog::rejected, this, &classFTP::btnCancel);

  auto* layout = new QVBoxLayout(ftpSettingsWindow_);
  layout->addLayout(fields);
  layout->addLayout(serverActions);
  layout->addWidget(ftpTestLoadingIndicator_);
  layout->addWidget(buttons);
  keepEnterForTheAnswers(ftpSettingsWindow_);
}

void classFTP::buildNewDirWindow() {
  newDirWindow_ = named(new QDialog(ftpSettingsWindow_), "newDirWindow");
  newDirWindow_->setWindowTitle(tr("New Folder on the Server"));
  newDirTextBox_ = named(new QLineEdit, "newDirTextBox");
  newDirTextBox_->setMinimumWidth(240);
  auto* fields = new QFormLayout;
  fields->addRow(tr("Folder name:"), newDirTextBox_);
  auto* buttons = new QDialogButtonBox;
  QPushButton* cancel = named(buttons->addButton(QDialogButtonBox::Cancel), "btnCancelCreateDir");
  QPushButton* create =
      named(buttons->addButton(tr("Create"), QDialogButtonBox::AcceptRole), "btnCreateDir");
  create->setDefault(true);
  connect(cancel, &QPushButton::clicked, this, &classFTP::btnCancelCreateDir);
  connect(create, &QPushButton::clicked, this, &classFTP::btnCreateDir);
  connect(newDirWindow_, &QDialog::rejected, this, &classFTP::btnCancelCreateDir);
  auto* layout = new QVBoxLayout(newDirWindow_);
  layout->addLayout(fields);
  layout->addWidget(buttons);
}

void classFTP::btnFTPSettings() {
  if (ftpSettingsWindow_->isVisible())
    return;
  if (PreferencesStore::contains(kFtpaddress)) {
    ftpAddressBox_->setText(PreferencesStore::text(kFtpaddress));
    ftpUserNameBox_->setText(PreferencesStore::text(kFtpusername));
    ftpPasswordBox_->setText(PreferencesStore::text(kFtppassword));
  }
  WindowPlacement::centreAndShow(ftpSettingsWindow_);
}

void classFTP::btnPreferencesFTPSettings() {
  btnFTPSettings();
}

void classFTP::btnSave() {
  PreferencesStore::setText(kFtpaddress, ftpAddressBox_->text());
  PreferencesStore::setText(kFtpusername, ftpUserNameBox_->text());
  PreferencesStore::setText(kFtppassword, ftpPasswordBox_->text());
  PreferencesStore::makePrivate();
  ftpSettingsWindow_->hide();
}

void classFTP::btnCancel() {
  ftpSettingsWindow_->hide();
}

bool classFTP::fieldsFilled() {
  const struct {
    QLineEdit* field;
    const char* missing;
  } required[] = {
      {ftpAddressBox_, "Please enter FTP server first."},
      {ftpUserNameBox_, "Please enter user name."},
      {ftpPasswordBox_, "Please enter password."},
  };
  for (const auto& [field, missing] : required) {
    if (field->text().isEmpty()) {
      dialogs_.alert(QStringLiteral("Error"), QString::fromLatin1(missing), QStringLiteral("OK"));
      return false;
    }
  }
  return true;
}

bool classFTP::runCurl(const ToolRun& run, QByteArray& errors) {
  ftpTestLoadingIndicator_->show();
  const ToolResult result = runner_.run(run);
  ftpTestLoadingIndicator_->hide();
  if (!result.started) {
    dialogs_.alert(QStringLiteral("Missing program"), ToolProblem::of(run, result)->message,
                   QStringLiteral("OK"));
    return false;
  }
  errors = result.errors;
  return true;
}

void classFTP::btnTest() {
  if (!fieldsFilled())
    return;
  QByteArray errors;
  if (!runCurl(FtpCommands::loginTest(ftpAddressBox_->text(), ftpUserNameBox_->text(),
                                      ftpPasswordBox_->text()),
               errors))
    return;
  if (const auto failure = FtpVerdict::of(errors))
    dialogs_.alert(failure->title, failure->message, QStringLiteral("OK"));
  else
    dialogs_.alert(QStringLiteral("FTP login successful"),
                   QStringLiteral("Quillet connected to the FTP successfuly."),
                   QStringLiteral("OK"));
}

void classFTP::btnCreateFTPDirectory() {
  if (!newDirWindow_->isVisible())
    WindowPlacement::centreAndShow(newDirWindow_);
}

void classFTP::btnCreateDir() {
  if (newDirTextBox_->text().isEmpty())
    return;
  if (ftpAddressBox_->text().isEmpty()) {
    dialogs_.alert(QStringLiteral("Can not create directory."),
                   QStringLiteral("Please add FTP server address first!"), QStringLiteral("OK"));
    return;
  }
  if (!fieldsFilled())
    return;
  const QString url = FtpCommands::folderAddress(ftpAddressBox_->text()) +
                      FtpCommands::addressSegment(newDirTextBox_->text()) + u'/';
  QByteArray errors;
  if (runCurl(FtpCommands::createDirectory(url, ftpUserNameBox_->text(), ftpPasswordBox_->text()),
              errors)) {
    if (const auto failure = FtpVerdict::of(errors))
      dialogs_.alert(failure->title, failure->message, QStringLiteral("OK"));
    else
      dialogs_.alert(QStringLiteral("Quillet created directory successfuly.\nDirectory path:"), url,
                     QStringLiteral("OK"));
  }
  // The address moves to the new folder, whatever the answer; it is stored
  // only by Save.
  newDirWindow_->hide();
  ftpAddressBox_->setText(url);
}

void classFTP::btnCancelCreateDir() {
  newDirWindow_->hide();
}
