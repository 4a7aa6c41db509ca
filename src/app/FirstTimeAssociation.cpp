#include "app/FirstTimeAssociation.h"

#include "app/AssociateNowButton.h"
#include "app/FileAssociation.h"
#include "platform/ResourceIcons.h"
#include "platform/WindowPlacement.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPropertyAnimation>
#include <QPushButton>

namespace {

constexpr int kIconSize = 64;
constexpr int kFadeInMs = 400;

}  // namespace

supportedFilesFirstTimeAssociation::supportedFilesFirstTimeAssociation(QWidget* parent,
                                                                       ToolRunner& runner)
    : QObject(parent),
      runner_(runner),
      mainWindow_(new QDialog(parent)),
      btnAssociateNow_(new QPushButton(tr("Associate now"))),
      associationProblem_(new QLabel) {
  mainWindow_->setObjectName(QStringLiteral("mainWindow"));
  mainWindow_->setWindowTitle(tr("Open Archives with Quillet"));

  auto* icon = new QLabel;
  icon->setPixmap(ResourceIcons::named(QStringLiteral("quillet")).pixmap(kIconSize));
  icon->setAlignment(Qt::AlignTop);
  auto* heading =
      new QLabel(QStringLiteral("<b>%1</b>").arg(tr("Should Quillet open your archives?")));
  auto* text = new QLabel(
      tr("Quillet can be the application that opens ZIP, RAR, 7z, TAR, GZIP, BZIP2, LHA and "
         "ARJ archives when you open them in your file manager. You can do this later "
         "from Preferences, on the Misc tab."));
  text->setWordWrap(true);
  associationProblem_->setObjectName(QStringLiteral("associationProblem"));
  associationProblem_->setWordWrap(true);
  associationProblem_->hide();

  auto* buttons = new QDialogButtonBox;
  btnAssociateNow_->setObjectName(QStringLiteral("btnAssociateNow"));
  btnAssociateNow_->setDefault(true);
  buttons->addButton(btnAssociateNow_, QDialogButtonBox::ActionRole);
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setObjectName(QStringLiteral("btnClose"));
  connect(btnAssociateNow_, &QPushButton::clicked, this,
          &supportedFilesFirstTimeAssociation::btnAssociateNow);
  connect(close, &QPushButton::clicked, this, &supportedFilesFirstTimeAssociation::btnClose);

  auto* layout = new QGridLayout(mainWindow_);
  layout->setHorizontalSpacing(16);
  layout->addWidget(icon, 0, 0, 3, 1);
  layout->addWidget(heading, 0, 1);
  layout->addWidget(text, 1, 1);
  layout->addWidget(associationProblem_, 2, 1);
  layout->addWidget(buttons, 3, 0, 1, 2);
  layout->setColumnStretch(1, 1);
  mainWindow_->setMinimumWidth(460);
}

void supportedFilesFirstTimeAssociation::showFadedIn() {
  mainWindow_->setWindowOpacity(0.0);
  WindowPlacement::centreAndShow(mainWindow_);
  auto* fadeIn = new QPropertyAnimation(mainWindow_, "windowOpacity", mainWindow_);
  fadeIn->setDuration(kFadeInMs);
  fadeIn->setEndValue(1.0);
  fadeIn->start(QAbstractAnimation::DeleteWhenStopped);
}

void supportedFilesFirstTimeAssociation::btnAssociateNow() {
  AssociateNowButton::press(runner_, *btnAssociateNow_, *associationProblem_);
}

void supportedFilesFirstTimeAssociation::btnClose() {
  mainWindow_->hide();
  FileAssociation::rememberOffered();
}
