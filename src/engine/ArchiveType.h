#pragma once

#include <QString>
#include <QStringList>

// The archive type is the path's extension exactly as written; it is
// compared case-sensitively with the known tokens below.
namespace ArchiveType {

inline const QString Zip = QStringLiteral("zip");
inline const QString SevenZip = QStringLiteral("7z");
inline const QString Rar = QStringLiteral("rar");
inline const QString Tar = QStringLiteral("tar");
inline const QString Tgz = QStringLiteral("tgz");
inline const QString Gz = QStringLiteral("gz");
inline const QString Bz2 = QStringLiteral("bz2");
inline const QString Tbz2 = QStringLiteral("tbz2");
inline const QString Bzip2 = QStringLiteral("bzip2");
inline const QString Arj = QStringLiteral("arj");
inline const QString Lha = QStringLiteral("lha");
inline const QString FirstVolume = QStringLiteral("001");

QString ofPath(const QString& path);

// A tar archive compressed as a whole: "tar.gz", "tar.bz2", "tar.xz" or
// "tar.zst", from the name's ending; empty for any other name.
QString compressedTarOf(const QString& path);
bool isCompressedTar(const QString& token);
// The type an archive opens as: a compressed tar archive when the user
// asked for those to be listed, else the extension.
QString ofOpenedPath(const QString& path);
// The path without the extension of its type: a compressed tar archive
// loses both, "x.tar.gz" becomes "x".
QString withoutTypeExtension(const QString& path, const QString& type);

// The image resource of the type ("zip.icns"...), empty where the type
// sets no icon.
QString iconResource(const QString& token);

// Whether opening this type also sets the converter's source icon.
bool setsConverterIcon(const QString& token);

// The extensions the open panel accepts, in the panel's order.
const QStringList& openPanelExtensions();
// Those, and "xz" and "zst" while compressed tar archives are listed.
QStringList openableExtensions();

}  // namespace ArchiveType
