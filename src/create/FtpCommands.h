#pragma once

#include "platform/ToolRunner.h"

#include <QString>
#include <QStringList>

// The curl runs of the FTP upload and the FTP settings window. The user
// name and password reach curl as its "--user" value through a config read
// from standard input ("-K -"), so the password never shows in the process
// list; every other argument is given on the command line.
namespace FtpCommands {

inline const QString kCurl = QStringLiteral("/usr/bin/curl");

// The address with "/" appended when it does not end with one.
QString folderAddress(const QString& address);
// A file or folder name (or folders within folders) for an address: the
// characters an address would read otherwise (space, "#", "?", "%",
// non-ASCII) are percent-encoded, everything else is kept as typed.
QString addressSegment(const QString& name);

ToolRun upload(const QString& path, const QString& link, const QString& user,
               const QString& password);
ToolRun loginTest(const QString& address, const QString& user, const QString& password);
ToolRun createDirectory(const QString& url, const QString& user, const QString& password);

// curl's config line for "--user", quoted so that any password survives.
QByteArray credentials(const QString& user, const QString& password);

}  // namespace FtpCommands
