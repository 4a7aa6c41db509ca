#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

// The size texts of the backup tab. Folder sizes come from du in whole
// kilobytes and are turned into bytes in signed 32-bit arithmetic, so
// folders of 2 GiB and more wrap.
namespace BackupSizeText {

// du's "<kilobytes>\t<path>" line as bytes, wrapped to 32 bits.
int bytesFromDu(QByteArrayView output);

// "%.2f KB" up to 1048575 bytes (whose number is not the size: the whole
// kilobytes reach the format as an integer), "%.2f MB" from 1048577 up to
// 1073741823, "%.2f GB" from 1073741825; exactly 1 MiB or 1 GiB gives an
// empty text.
QString folder(int bytes);

// The number at the start of a size text, whatever its unit.
float leadingNumber(const QString& sizeText);

// The sum of the chosen parts' numbers, units ignored: "%.2f MB" below
// 1024, "%.2f GB" of a 1024th above; nothing at exactly 1024.
std::optional<QString> total(float sum);

}  // namespace BackupSizeText
