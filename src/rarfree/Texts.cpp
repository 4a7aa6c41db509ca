#include "rarfree/Texts.h"

namespace Texts {

QString inReport(const QString& name) {
  QString shown = name;
  return shown.replace(QStringLiteral("All OK"), QStringLiteral("All_OK"));
}

}  // namespace Texts
