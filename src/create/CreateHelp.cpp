#include "create/CreateHelp.h"

#include "platform/WindowPlacement.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QVBoxLayout>

namespace {

void showHelp(QWidget* owner, const QString& objectName, const QString& title,
              const QString& text) {
  auto* window = owner->findChild<QDialog*>(objectName);
  if (!window) {
    window = new QDialog(owner);
    window->setObjectName(objectName);
    window->setWindowTitle(title);
    auto* layout = new QVBoxLayout(window);
    auto* body = new QLabel(text);
    body->setWordWrap(true);
    body->setMinimumWidth(380);
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
    QObject::connect(buttons, &QDialogButtonBox::rejected, window, &QDialog::hide);
    layout->addWidget(body);
    layout->addWidget(buttons);
  }
  WindowPlacement::centreAndShow(window);
}

}  // namespace

namespace CreateHelp {

void showArchiveHelp(QWidget* owner) {
  showHelp(owner, QStringLiteral("helpWindowCreateArchive"), QObject::tr("Creating archives"),
           QObject::tr("<p><b>Format</b>: ZIP and 7Z offer a password, volumes and a "
                       "self-extracting form; RAR offers a password, volumes in kilobytes and a "
                       "note; TAR, TAR.GZ, TAR.BZ2, ARJ and LHA pack the items as they are.</p>"
                       "<p><b>Level</b>: from storing only (fastest) to ultra (smallest).</p>"
                       "<p><b>Volumes</b>: the finished archive is cut into parts of the size "
                       "given, to fit on media or mail limits.</p>"));
}

void showSfxHelp(QWidget* owner) {
  showHelp(owner, QStringLiteral("windowSFXHelp"), QObject::tr("Self-extracting archives"),
           QObject::tr("<p>A self-extracting archive is a folder that carries the archive and "
                       "a small program. Whoever receives it runs <i>Extract Archive</i> inside "
                       "it and the files appear beside the folder; no archive manager is "
                       "needed. The note you write is shown first.</p>"));
}

}  // namespace CreateHelp
