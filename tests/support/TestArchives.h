#pragma once

#include "engine/ArchiveEntry.h"
#include "engine/listing/EntryIcons.h"
#include "platform/ToolRunner.h"

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

// Test data: the shared tool-output fixtures, and real archives made by the
// installed tools from a small tree of files.
namespace TestArchives {

QByteArray fixture(const QString& relativePath);
QString fixturePath(const QString& relativePath);

// Writes a tree with folders, spaces and non-ASCII names under root/name
// and returns its files' paths relative to root, sorted.
QStringList writeSampleTree(const QString& root, const QString& name);

// Runs a program in a folder with LC_ALL=C.UTF-8 and fails the test when it
// does not exit 0.
QByteArray runIn(const QString& folder, const QString& program, const QStringList& arguments);

// Makes folder/archive afresh by running program in runFolder (folder when
// empty), with "%A" in the arguments standing for the archive's path.
// Returns that path; stops the test run when no archive was made.
QString makeArchive(const QString& folder, const QString& archive, const QString& program,
                    QStringList arguments, const QString& runFolder = QString());

// The zlib CRC-32 of a file, as 7-Zip prints it.
QString crcOfFile(const QString& path);

// Every file under root (hidden ones too) by its relative path, with its
// bytes, so that extracted trees compare byte for byte.
using Tree = QMap<QString, QByteArray>;
Tree treeUnder(const QString& root);

void writeFile(const QString& path, const QByteArray& content);
QByteArray contentOf(const QString& path);

// The rows' names, sorted, to compare listings whatever their order.
QStringList sortedNamesOf(const ArchiveEntries& rows);

}  // namespace TestArchives

// Names every icon request, so tests can tell which names got icons.
class RecordingIcons : public EntryIcons {
 public:
  QIcon setListViewIcon(const QString& name) override {
    names << name;
    return {};
  }
  QStringList names;
};
