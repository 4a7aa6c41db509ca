#include "create/ClassEmail.h"

#include "create/MailNotice.h"
#include "platform/ObjectNames.h"
#include "platform/PreferenceKeys.h"
#include "platform/WindowPlacement.h"

#include <QCheckBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

using namespace PreferenceKeys;

// These two keys hold "1" and "0", unlike every other switch.
QString oneOrZero(const QCheckBox* checkbox) {
  return checkbox->isChecked() ? QStringLiteral("1") : QStringLiteral("0");
}

}  // namespace

ClassEmail::ClassEmail(QWidget* parent)
    : QObject(parent),
      mailSettingsWindow_(named(new QDialog(parent), "mailSettingsWindow")),
      fieldTo_(named(new QLineEdit, "fieldTo")),
      fieldSubject_(named(new QLineEdit, "fieldSubject")),
      fieldMessage_(named(new QPlainTextEdit, "fieldMessage")),
      chkAttachLinkOutlet_(
          named(new QCheckBox(tr("Add the link to the uploaded archive")), "chkAttachLinkOutlet")),
      chkIncludeDateOutlet_(named(new QCheckBox(tr("Add the time the upload was completed")),
                                  "chkIncludeDateOutlet")) {
  mailSettingsWindow_->setWindowTitle(tr("E-mail Settings"));
  mailSettingsWindow_->setWindowFlag(Qt::WindowStaysOnTopHint);
  fieldTo_->setPlaceholderText(tr("name@example.com"));
  fieldTo_->setMinimumWidth(320);
  fieldMessage_->setTabChangesFocus(true);
  fieldMessage_->setMinimumHeight(120);

  auto* fields = new QFormLayout;
  fields->addRow(tr("Send to:"), fieldTo_);
  fields->addRow(tr("Subject:"), fieldSubject_);
  fields->addRow(tr("Message:"), fieldMessage_);
  fields->addRow(QString(), chkAttachLinkOutlet_);
  fields->addRow(QString(), chkIncludeDateOutlet_);

  auto* buttons = new QDialogButtonBox;
  QPushButton* cancel = named(buttons->addButton(QDialogButtonBox::Cancel), "btnCancel");
  QPushButton* save = named(buttons->addButton(QDialogButtonBox::Save), "btnSave");
  save->setDefault(true);
  connect(cancel, &QPushButton::clicked, this, &ClassEmail::btnCancel);
  connect(save, &QPushButton::clicked, this, &ClassEmail::btnSave);
  connect(mailSettingsWindow_, &QDialog::rejected, this, &ClassEmail::btnCancel);

  auto* layout = new QVBoxLayout(mailSettingsWindow_);
  layout->addLayout(fields, 1);
  layout->addWidget(buttons);
}

void ClassEmail::btnOpenEmailSettings() {
  if (mailSettingsWindow_->isVisible())
    return;
  if (PreferencesStore::contains(kMailaddress)) {
    const MailNotice::Settings stored = MailNotice::Settings::stored();
    fieldTo_->setText(stored.address);
    fieldSubject_->setText(stored.subject);
    if (PreferencesStore::contains(kMailmessage))
      fieldMessage_->setPlainText(stored.message);
    if (stored.attachLink)
      chkAttachLinkOutlet_->setChecked(true);
    if (stored.includeDate)
      chkIncludeDateOutlet_->setChecked(true);
  }
  WindowPlacement::centreAndShow(mailSettingsWindow_);
}

void ClassEmail::btnSave() {
  PreferencesStore::setText(kMailaddress, fieldTo_->text());
  PreferencesStore::setText(kMailsubject, fieldSubject_->text());
  PreferencesStore::setText(kMailmessage, fieldMessage_->toPlainText());
  PreferencesStore::setText(kAttachlink, oneOrZero(chkAttachLinkOutlet_));
  PreferencesStore::setText(kIncludedate, oneOrZero(chkIncludeDateOutlet_));
  mailSettingsWindow_->hide();
}

void ClassEmail::btnCancel() {
  mailSettingsWindow_->hide();
}
