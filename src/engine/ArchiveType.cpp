#include "engine/ArchiveType.h"

#include "engine/PathText.h"
#include "platform/PreferenceKeys.h"

#include <QHash>

namespace ArchiveType {

QString ofPath(const QString& path) {
  return PathText::pathExtension(path);
}

namespace {

const QStringList& compressedTars() {
  static const QStringList tokens = {"tar.gz", "tar.bz2", "tar.xz", "tar.zst"};
  return tokens;
}

}  // namespace

QString compressedTarOf(const QString& path) {
  const QString name = PathText::lastPathComponent(path);
  for (const QString& token : compressedTars()) {
    if (name.size() > token.size() + 1 && name.endsWith(u'.' + token))
      return token;
  }
  return {};
}

bool isCompressedTar(const QString& token) {
  return compressedTars().contains(token);
}

QString ofOpenedPath(const QString& path) {
  const QString tar = compressedTarOf(path);
  if (!tar.isEmpty() && PreferencesStore::isYes(PreferenceKeys::kListCompressedTarArchives))
    return tar;
  return ofPath(path);
}

QString withoutTypeExtension(const QString& path, const QString& type) {
  if (isCompressedTar(type))
    return path.chopped(type.size() + 1);
  return PathText::deletingPathExtension(path);
}

QString iconResource(const QString& token) {
  static const QHash<QString, QString> icons = {
      {Zip, "zip.icns"},      {SevenZip, "7z.icns"},
      {Bz2, "bz2.icns"},      {Tbz2, "bz2.icns"},
      {Tgz, "tgz.icns"},      {Tar, "tar.icns"},
      {Rar, "rar.icns"},      {Arj, "arj.icns"},
      {Lha, "lha.icns"},      {FirstVolume, "splitarchive.icns"},
      {"tar.gz", "tgz.icns"}, {"tar.bz2", "bz2.icns"},
      {"tar.xz", "tar.icns"}, {"tar.zst", "tar.icns"},
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

QStringList openableExtensions() {
  if (!PreferencesStore::isYes(PreferenceKeys::kListCompressedTarArchives))
    return openPanelExtensions();
  return openPanelExtensions() + QStringList{"xz", "zst"};
}

}  // namespace ArchiveType
