#include "tools/ConverterWindow.h"

#include "platform/ResourceIcons.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

constexpr int kIconSize = 64;
constexpr int kTargetIconSize = 32;

QLineEdit* readOnlyField(const char* objectName) {
  auto* field = new QLineEdit;
  field->setObjectName(QString::fromLatin1(objectName));
  field->setReadOnly(true);
  field->setFrame(false);
  field->setFocusPolicy(Qt::ClickFocus);
  field->setStyleSheet(QStringLiteral("QLineEdit { background: transparent; }"));
  return field;
}

QAbstractButton* targetButton(const char* objectName, const QString& text, const char* icon) {
  auto* button = new QToolButton;
  button->setObjectName(QString::fromLatin1(objectName));
  button->setText(text);
  button->setIcon(ResourceIcons::named(QString::fromLatin1(icon)));
  button->setIconSize(QSize(kTargetIconSize, kTargetIconSize));
  button->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
  button->setCheckable(true);
  button->setMinimumWidth(72);
  return button;
}

QLabel* iconView(QLabel* view, const char* objectName) {
  view->setObjectName(QString::fromLatin1(objectName));
  view->setFixedSize(kIconSize, kIconSize);
  view->setAlignment(Qt::AlignCenter);
  view->show();
  return view;
}

}  // namespace

ConverterWindow::ConverterWindow(QLabel* iconCurrent, QWidget* parent)
    : QDialog(parent),
      archivePath_(readOnlyField("archivePath")),
      archiveType_(readOnlyField("archiveType")),
      passwordTextField_(new QLineEdit),
      iconCurrent_(iconView(iconCurrent, "sourceArchive4ConvertionIcon")),
      iconConverted_(iconView(new QLabel, "iconConverted")),
      loadingIndicator_(new QProgressBar),
      phaseLoadingIndicator_(new QProgressBar),
      statusLine_(new QLabel),
      targets_(new QButtonGroup(this)),
      zipButton_(targetButton("dropZip", tr("ZIP"), "zip.icns")),
      sevenZipButton_(targetButton("drop7z", tr("7z"), "7z.icns")),
      rarButton_(targetButton("dropRAR", tr("RAR"), "rar.icns")) {
  setObjectName(QStringLiteral("windowConvertArchive"));
  setWindowTitle(tr("Convert Archive"));
  setWindowModality(Qt::ApplicationModal);

  passwordTextField_->setObjectName(QStringLiteral("passwordTextField"));
  passwordTextField_->setEchoMode(QLineEdit::Password);
  passwordTextField_->setPlaceholderText(tr("None"));
  passwordTextField_->setToolTip(
      tr("Opens the archive, and protects the converted 7z or ZIP archive."));
  passwordTextField_->setClearButtonEnabled(true);

  loadingIndicator_->setObjectName(QStringLiteral("loadingIndicator"));
  loadingIndicator_->setRange(0, 0);
  loadingIndicator_->setTextVisible(false);
  loadingIndicator_->setMaximumWidth(80);
  loadingIndicator_->setToolTip(tr("Extracting"));
  QSizePolicy keepSpace = loadingIndicator_->sizePolicy();
  keepSpace.setRetainSizeWhenHidden(true);
  loadingIndicator_->setSizePolicy(keepSpace);
  loadingIndicator_->hide();
  phaseLoadingIndicator_->setObjectName(QStringLiteral("phaseLoadingIndicator"));
  phaseLoadingIndicator_->setRange(0, 2);
  phaseLoadingIndicator_->setValue(0);
  phaseLoadingIndicator_->setFormat(tr("Ready"));
  connect(phaseLoadingIndicator_, &QProgressBar::valueChanged, this, [this](int step) {
    phaseLoadingIndicator_->setFormat(step == 0 ? tr("Ready") : tr("Step %v of %m"));
  });
  statusLine_->setObjectName(QStringLiteral("converterStatus"));
  statusLine_->setWordWrap(true);
  statusLine_->setTextInteractionFlags(Qt::TextSelectableByMouse);

  auto* form = new QFormLayout;
  form->addRow(tr("Archive:"), archivePath_);
  form->addRow(tr("Type:"), archiveType_);
  form->addRow(tr("Convert to:"), buildTargets());
  form->addRow(tr("&Password:"), passwordTextField_);
  auto* progress = new QHBoxLayout;
  progress->addWidget(phaseLoadingIndicator_, 1);
  progress->addWidget(loadingIndicator_);
  form->addRow(tr("Progress:"), progress);

  auto* buttons = new QDialogButtonBox;
  convertButton_ = buttons->addButton(tr("C&onvert"), QDialogButtonBox::AcceptRole);
  convertButton_->setObjectName(QStringLiteral("btnConvert"));
  convertButton_->setIcon(QIcon::fromTheme(QStringLiteral("document-save-as")));
  convertButton_->setDefault(true);
  cancelButton_ = buttons->addButton(QDialogButtonBox::Cancel);
  cancelButton_->setObjectName(QStringLiteral("btnCancel"));
  closeButton_ = buttons->addButton(QDialogButtonBox::Close);
  closeButton_->setObjectName(QStringLiteral("btnClose"));
  // Hidden once every button is in: adding one shows all of them again.
  cancelButton_->hide();
  connect(cancelButton_, &QPushButton::clicked, this, &ConverterWindow::cancelRequested);

  auto* layout = new QVBoxLayout(this);
  layout->addWidget(buildIcons());
  layout->addLayout(form);
  layout->addWidget(statusLine_);
  layout->addStretch(1);
  layout->addWidget(buttons);
  settings_ = {zipButton_,         sevenZipButton_, rarButton_,
               passwordTextField_, convertButton_,  closeButton_};
  setMinimumWidth(460);
}

QWidget* ConverterWindow::buildIcons() {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  auto* arrow = new QLabel;
  arrow->setPixmap(QIcon::fromTheme(QStringLiteral("go-next")).pixmap(32));
  if (arrow->pixmap().isNull()) {
    arrow->setText(QStringLiteral("→"));
    QFont large = arrow->font();
    large.setPointSizeF(large.pointSizeF() * 2.5);
    arrow->setFont(large);
  }
  layout->addStretch(1);
  layout->addWidget(iconCurrent_);
  layout->addSpacing(12);
  layout->addWidget(arrow);
  layout->addSpacing(12);
  layout->addWidget(iconConverted_);
  layout->addStretch(1);
  return row;
}

QWidget* ConverterWindow::buildTargets() {
  auto* row = new QWidget;
  auto* layout = new QHBoxLayout(row);
  layout->setContentsMargins(0, 0, 0, 0);
  for (QAbstractButton* button : {zipButton_, sevenZipButton_, rarButton_}) {
    targets_->addButton(button);
    layout->addWidget(button);
  }
  layout->addStretch(1);
  return row;
}

void ConverterWindow::setBusy(bool busy) {
  busy_ = busy;
  for (QWidget* widget : settings_)
    widget->setEnabled(!busy);
  cancelButton_->setVisible(busy);
  cancelButton_->setEnabled(busy);
  closeButton_->setVisible(!busy);
  if (busy)
    cancelButton_->setFocus();
}

void ConverterWindow::showTarget(QAbstractButton* target) {
  targets_->setExclusive(false);
  for (QAbstractButton* button : targets_->buttons())
    button->setChecked(button == target);
  targets_->setExclusive(true);
}

void ConverterWindow::closeEvent(QCloseEvent* event) {
  if (busy_)
    event->ignore();
  else
    QDialog::closeEvent(event);
}

void ConverterWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape && busy_) {
    emit cancelRequested();
    return;
  }
  QDialog::keyPressEvent(event);
}
