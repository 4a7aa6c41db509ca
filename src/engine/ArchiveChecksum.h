#pragma once

#include <QString>

// The CRC-32 (ISO/IEC 8802-3, as zip uses) of an archive file, read in
// chunks so that large archives cost no memory.
namespace ArchiveChecksum {

// Upper-case hexadecimal with no leading zeros; "0" when the file cannot be
// read, as an empty checksum line reads as zero.
QString GetCRC32(const QString& path);

// The low 32 bits of a checksum number, as "%X".
QString text(quint64 checksum);

}  // namespace ArchiveChecksum
