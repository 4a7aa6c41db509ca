#include "create/CreateTab.h"

#include "create/CreateArchiveListView.h"
#include "platform/ResourceIcons.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

CreateTab::CreateTab(ToolRunner& runner, Dialogs& dialogs, Desktop& desktop, QWidget* parent)
    : QWidget(parent),
      list_(new CreateArchiveListView(runner, dialogs, desktop)),
      chkEveryItemNewArchive_(new QCheckBox(tr("Make every item an archive of its own"))),
      btnCreateAction_(new QPushButton(
          ResourceIcons::themed(QStringLiteral("archive-insert"), QStringLiteral("action-create")),
          tr("Create Archive…"))) {
  chkEveryItemNewArchive_->setObjectName(QStringLiteral("chkEveryItemNewArchive"));
  btnCreateAction_->setObjectName(QStringLiteral("btnCreateAction"));
  btnCreateAction_->setDefault(true);
  btnCreateAction_->setIconSize(QSize(22, 22));

  auto* title =
      new QLabel(tr("<b>New archive</b><br>Add files and folders, or drag them onto the "
                    "drop zone, then create the archive."));
  title->setWordWrap(true);
  auto* bottom = new QHBoxLayout;
  bottom->addWidget(chkEveryItemNewArchive_);
  bottom->addStretch();
  bottom->addWidget(btnCreateAction_);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(title);
  layout->addWidget(list_, 1);
  layout->addLayout(bottom);
}
