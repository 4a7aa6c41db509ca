#include "app/AboutClass.h"

#include "platform/ResourceIcons.h"
#include "platform/WindowPlacement.h"

#include <QCoreApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kIconSize = 96;

}  // namespace

AboutClass::AboutClass(QWidget* parent)
    : QObject(parent), aboutWindow_(new QDialog(parent)), versionLabel_(new QLabel) {
  aboutWindow_->setObjectName(QStringLiteral("aboutWindow"));
  aboutWindow_->setWindowTitle(tr("About Quillet"));
  auto* icon = new QLabel;
  icon->setPixmap(ResourceIcons::named(QStringLiteral("quillet")).pixmap(kIconSize));
  icon->setAlignment(Qt::AlignCenter);
  auto* name = new QLabel(QStringLiteral("<h2>Quillet</h2>"));
  name->setAlignment(Qt::AlignCenter);
  versionLabel_->setObjectName(QStringLiteral("versionLabel"));
  versionLabel_->setAlignment(Qt::AlignCenter);
  auto* purpose =
      new QLabel(tr("An archive manager. Quillet opens, tests, extracts and creates "
                    "archives with the command-line tools of your system."));
  purpose->setWordWrap(true);
  purpose->setAlignment(Qt::AlignCenter);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("btnCool"));
  connect(buttons, &QDialogButtonBox::rejected, this, &AboutClass::btnCool);

  auto* layout = new QVBoxLayout(aboutWindow_);
  layout->addWidget(icon);
  layout->addWidget(name);
  layout->addWidget(versionLabel_);
  layout->addWidget(purpose);
  layout->addWidget(buttons);
  aboutWindow_->setMinimumWidth(340);
}

void AboutClass::menuAbout() {
  if (aboutWindow_->isVisible())
    return;
  versionLabel_->setText(QStringLiteral("Version: ") + QCoreApplication::applicationVersion());
  WindowPlacement::centreAndShow(aboutWindow_);
}

void AboutClass::btnCool() {
  aboutWindow_->hide();
}
