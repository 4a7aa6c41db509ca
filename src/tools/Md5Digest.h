#pragma once

#include "platform/ToolRunner.h"

#include <QString>

// The MD5 checksum of a file as the system's md5 tool prints it, "MD5 (" +
// file + ") = " + 32 hex digits, and the two ways Quillet cuts the digest
// out of that line.
namespace Md5Digest {

ToolRun run(const QString& file);

// The tool's output with GNU's escaping undone: a name holding a backslash
// or a line break makes it start the line with "\" and write them as "\\",
// "\n" and "\r".
QString unescaped(const QString& output);

// Every "MD5 (" + file + ") = " and every line break removed, so that a
// name containing ") = " still leaves the bare digest.
QString digestFrom(const QString& output, const QString& file);

// What follows the first "= ", line break included; empty when there is
// none. A name containing "= " cuts it in the wrong place.
QString pieceAfterEquals(const QString& output);

}  // namespace Md5Digest

// The checksum as a reusable utility, apart from the checksum window.
class pcls {
 public:
  explicit pcls(ToolRunner& runner) : runner_(runner) {}
  QString MD5HashFile(const QString& path);

 private:
  ToolRunner& runner_;
};
