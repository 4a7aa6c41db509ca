#include "engine/ArchiveType.h"

#include "engine/PathText.h"

#include <QHash>

namespace ArchiveType {

QString ofPath(const QString& path) {
  return PathText::pathExtension(path);
}

QString iconResource(const QString& token) {
  static const QHash<QString, QString> icons = {
      {Zip, "zip.icns"}, {SevenZip, "7z.icns"},
      {Bz2, "bz2.icns"}, {Tbz2, "bz2.icns"},
      {Tgz, "tgz.icns"}, {Tar, "tar.icns"},
      {Rar, "rar.icns"}, {Arj, "arj.icns"},
      {Lha, "lha.icns"}, {FirstVolume, "splitarchive.icns"},
  };
  return icons.value(token);
}

bool setsConverterIcon(const QString& token) {
  return token == Zip || token == SevenZip || token == Rar || token == Arj || token == Lha;
}

const QStringList& openPanelExtensions() {
  static const QStringList extensions = {"zip", "gz",  "tgz", "bzip2", "bz2", "7z",
                                         "tar", "rar", "001", "arj",   "lha", "tbz2"};
  return extensions;
}

}  // namespace ArchiveType
