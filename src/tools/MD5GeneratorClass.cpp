#include "tools/MD5GeneratorClass.h"

#include "engine/ToolProblem.h"
#include "platform/ToolRunner.h"
#include "platform/WindowPlacement.h"
#include "tools/Md5Digest.h"

#include <QApplication>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

MD5GeneratorClass::MD5GeneratorClass(ToolRunner& runner, QLineEdit* filePathField, QWidget* owner,
                                     QObject* parent)
    : QObject(parent),
      runner_(runner),
      filePathField_(filePathField),
      md5Window_(new QDialog(owner)),
      fileLabel_(new QLabel),
      textField_(new QLineEdit),
      problemLine_(new QLabel) {
  md5Window_->setObjectName(QStringLiteral("md5Window"));
  md5Window_->setWindowTitle(tr("MD5 Checksum"));
  fileLabel_->setObjectName(QStringLiteral("md5File"));
  fileLabel_->setWordWrap(true);
  fileLabel_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  textField_->setObjectName(QStringLiteral("textField"));
  textField_->setReadOnly(true);
  textField_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  textField_->setMinimumWidth(textField_->fontMetrics().horizontalAdvance(QString(36, u'0')));
  problemLine_->setObjectName(QStringLiteral("md5Problem"));
  problemLine_->setWordWrap(true);
  problemLine_->hide();

  auto* form = new QFormLayout;
  form->addRow(tr("File:"), fileLabel_);
  form->addRow(tr("MD5:"), textField_);
  auto* buttons = new QDialogButtonBox;
  QPushButton* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  copy->setIcon(QIcon::fromTheme(QStringLiteral("edit-copy")));
  QPushButton* close = buttons->addButton(QDialogButtonBox::Close);
  close->setObjectName(QStringLiteral("btnClose"));
  close->setDefault(true);
  connect(copy, &QPushButton::clicked, this,
          [this] { QApplication::clipboard()->setText(textField_->text()); });
  connect(close, &QPushButton::clicked, this, &MD5GeneratorClass::btnClose);
  connect(textField_, &QLineEdit::textChanged, copy,
          [copy](const QString& text) { copy->setEnabled(!text.isEmpty()); });
  copy->setEnabled(false);

  auto* layout = new QVBoxLayout(md5Window_);
  layout->addLayout(form);
  layout->addWidget(problemLine_);
  layout->addStretch(1);
  layout->addWidget(buttons);
}

void MD5GeneratorClass::btnMD5Generator() {
  if (md5Window_->isVisible())
    return;
  WindowPlacement::centreAndShow(md5Window_);
  QString file = filePathField_->text();
  if (file.isEmpty() && customContextMenuPath_)
    file = customContextMenuPath_();
  if (file.isEmpty())
    return;
  fileLabel_->setText(file);
  const ToolRun run = Md5Digest::run(file);
  const ToolResult result = runner_.run(run);
  textField_->setText(Md5Digest::digestFrom(QString::fromUtf8(result.output), file));
  const std::optional<ToolProblem> problem = ToolProblem::of(run, result);
  problemLine_->setText(problem ? problem->message : QString());
  problemLine_->setVisible(problem.has_value());
}

void MD5GeneratorClass::btnClose() {
  md5Window_->hide();
}
