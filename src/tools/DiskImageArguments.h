#pragma once

#include <QString>
#include <QStringList>

// What the image tool is asked to make.
struct DiskImageOrder {
  QString sizeText;  // the size field's text; "0" means no fixed size
  int sizeUnit = 0;  // 0 kilobytes, 1 megabytes, 2 gigabytes
  bool encrypted = false;
  int algorithm = 0;  // 0 AES-128, anything else AES-256
  QString source;
  QString image;
};

namespace DiskImageArguments {

// "AES-128" for the first item, "AES-256" for any other.
QString algorithm(int item);

// The size text followed by "k", "m" or "g"; no unit for any other item.
QString size(const QString& sizeText, int unit);

// The image tool's arguments. An encrypted image also gets the switch by
// which the tool reads the password from its standard input, so that the
// password never appears among them.
QStringList arguments(const DiskImageOrder& order);

inline const QString kPasswordOnInput = QStringLiteral("-stdinpass");

}  // namespace DiskImageArguments
