#pragma once

#include <QString>
#include <QStringList>

// How names reach the archiving tools: as the names they are, never as a
// switch, a wildcard or a list of names to read, so that a tool acts on the
// file or entry the user chose and on nothing else.
namespace LiteralNames {

// A file on disk as one argument: a name that starts with "-", "@" or "!"
// (a switch, or a list file for 7-Zip, rar and arj) becomes "./" + name,
// the same file.
QString fileArgument(const QString& name);

// Whether 7-Zip would expand the name as a wildcard or read it as a list
// file.
bool sevenZipReadsAsPattern(const QString& name);

// 7-Zip's arguments with every name taken literally. Ordinary names keep
// the vector exactly as leading + names + trailing; a wildcard or list-file
// name adds "-spd" after the command; a name that starts with "-" or "@"
// puts all names last, behind "--".
QStringList forSevenZip(const QStringList& leading, const QStringList& names,
                        const QStringList& trailing = {});

// The first name that the program (by its file name: "r", "unrar", "arj",
// ...) would expand or read as a list file and cannot be told to take
// literally; empty when there is none. 7-Zip and lha take every name.
QString firstUnsafe(const QString& program, const QStringList& names);

// The alert that refuses such a name before anything runs.
struct Refusal {
  QString title;
  QString message;
};
Refusal refusalOf(const QString& name);

}  // namespace LiteralNames
