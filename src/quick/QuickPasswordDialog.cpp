#include "quick/QuickPasswordDialog.h"

#include "platform/ResourceIcons.h"
#include "quick/FloatingWindow.h"
#include "quick/PathLabel.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int kIconSize = 48;
constexpr int kFieldWidth = 280;

}  // namespace

QuickPasswordDialog::QuickPasswordDialog(QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::WindowStaysOnTopHint),
      passwordTextField_(new QLineEdit),
      fileNameLabel_(new PathLabel) {
  setObjectName(QStringLiteral("enterPasswordDlg"));
  setWindowTitle(tr("Password"));
  setWindowIcon(ResourceIcons::named(QStringLiteral("quillet")));

  auto* icon = new QLabel;
  icon->setPixmap(
      ResourceIcons::themed(QStringLiteral("dialog-password"), QStringLiteral("action-password"))
          .pixmap(kIconSize));
  auto* message = new QLabel(tr("<b>This archive is protected.</b>"));
  fileNameLabel_->setObjectName(QStringLiteral("passwordProtectedDroppedFileNameLabel"));
  fileNameLabel_->setFixedWidth(kFieldWidth);
  auto* prompt = new QLabel(tr("Enter its password to extract it."));
  passwordTextField_->setObjectName(QStringLiteral("passwordTextField"));
  passwordTextField_->setEchoMode(QLineEdit::Password);
  passwordTextField_->setFixedWidth(kFieldWidth);
  passwordTextField_->setClearButtonEnabled(true);

  auto* buttons = new QDialogButtonBox;
  QPushButton* ok = buttons->addButton(QDialogButtonBox::Ok);
  ok->setObjectName(QStringLiteral("btnPasswordDlgOK"));
  ok->setDefault(true);
  QPushButton* cancel = buttons->addButton(QDialogButtonBox::Cancel);
  cancel->setObjectName(QStringLiteral("btnPasswordDlgCancel"));
  connect(ok, &QPushButton::clicked, this, &QuickPasswordDialog::okPressed);
  connect(cancel, &QPushButton::clicked, this, &QuickPasswordDialog::cancelPressed);

  auto* layout = new QGridLayout(this);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  layout->setHorizontalSpacing(14);
  layout->addWidget(icon, 0, 0, 4, 1, Qt::AlignTop);
  layout->addWidget(message, 0, 1);
  layout->addWidget(fileNameLabel_, 1, 1);
  layout->addWidget(prompt, 2, 1);
  layout->addWidget(passwordTextField_, 3, 1);
  layout->addWidget(buttons, 4, 0, 1, 2);
}

void QuickPasswordDialog::presentFor(const QString& archiveName) {
  fileNameLabel_->setPath(archiveName);
  FloatingWindow::orderFrontCentred(this);
  passwordTextField_->setFocus();
}
