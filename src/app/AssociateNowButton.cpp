#include "app/AssociateNowButton.h"

#include "app/FileAssociation.h"

#include <QLabel>
#include <QPushButton>

namespace AssociateNowButton {

void press(ToolRunner& runner, QPushButton& button, QLabel& problem) {
  const std::optional<QString> failure = FileAssociation::associate(runner);
  button.setText(QStringLiteral("Done"));
  button.setEnabled(false);
  FileAssociation::rememberOffered();
  problem.setText(failure.value_or(QString()));
  problem.setVisible(failure.has_value());
}

}  // namespace AssociateNowButton
