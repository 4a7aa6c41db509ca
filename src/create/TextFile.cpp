#include "create/TextFile.h"

#include <QSaveFile>
#include <QStringEncoder>

namespace TextFile {

bool write(const QString& path, const QString& text, QStringConverter::Encoding encoding) {
  QSaveFile file(path);
  if (!file.open(QIODevice::WriteOnly))
    return false;
  QStringEncoder encoder(encoding, encoding == QStringConverter::Utf8
                                       ? QStringConverter::Flag::Default
                                       : QStringConverter::Flag::WriteBom);
  file.write(encoder.encode(text));
  return file.commit();
}

}  // namespace TextFile
