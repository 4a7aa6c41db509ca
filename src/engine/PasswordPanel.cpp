#include "engine/PasswordPanel.h"

#include "platform/ResourceIcons.h"

#include "platform/WindowPlacement.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScreen>

PasswordPanel::PasswordPanel(QWidget* parent) : QDialog(parent), passwordTextField_(new QLineEdit) {
  setObjectName(QStringLiteral("enterPasswordDlg"));
  setWindowTitle(tr("Password"));
  setWindowModality(Qt::WindowModal);

  auto* icon = new QLabel;
  icon->setPixmap(
      ResourceIcons::themed(QStringLiteral("dialog-password"), QStringLiteral("action-password"))
          .pixmap(48));
  auto* message =
      new QLabel(tr("<b>This archive is protected.</b><br>Enter its password to list it."));
  passwordTextField_->setObjectName(QStringLiteral("passwordTextField"));
  passwordTextField_->setEchoMode(QLineEdit::Password);
  passwordTextField_->setMinimumWidth(260);
  passwordTextField_->setClearButtonEnabled(true);

  auto* buttons = new QDialogButtonBox;
  QPushButton* ok = buttons->addButton(QDialogButtonBox::Ok);
  ok->setObjectName(QStringLiteral("btnPasswordProtectedDlgOK"));
  ok->setDefault(true);
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setObjectName(QStringLiteral("btnClosePasswordDlg"));
  connect(ok, &QPushButton::clicked, this, &PasswordPanel::okPressed);
  connect(close, &QPushButton::clicked, this, &QDialog::reject);
  connect(this, &QDialog::rejected, this, &PasswordPanel::closePressed);

  auto* layout = new QGridLayout(this);
  layout->addWidget(icon, 0, 0, 2, 1, Qt::AlignTop);
  layout->addWidget(message, 0, 1);
  layout->addWidget(passwordTextField_, 1, 1);
  layout->addWidget(buttons, 2, 0, 1, 2);
}

void PasswordPanel::centreAndShow() {
  WindowPlacement::centreAndShow(this);
  passwordTextField_->setFocus();
}
