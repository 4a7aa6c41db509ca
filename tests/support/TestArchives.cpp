#include "support/TestArchives.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <zlib.h>

namespace TestArchives {

QString fixturePath(const QString& relativePath) {
  return qEnvironmentVariable("QUILLET_FIXTURES") + u'/' + relativePath;
}

QByteArray fixture(const QString& relativePath) {
  QFile file(fixturePath(relativePath));
  if (!file.open(QIODevice::ReadOnly))
    qFatal("missing fixture %s", qPrintable(file.fileName()));
  return file.readAll();
}

QStringList writeSampleTree(const QString& root, const QString& name) {
  const QList<std::pair<QString, QByteArray>> files = {
      {"a.txt", "hello\n"},
      {"dir one/b.bin", QByteArray(5000, 'b') + QByteArray("tail")},
      {"dir one/sub/ünï cödé.txt", "x\n"},
      {"empty", ""},
      {"big.dat", QByteArray(1536, 'z')},
  };
  QStringList written;
  for (const auto& [relative, content] : files) {
    const QString path = root + u'/' + name + u'/' + relative;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
      qFatal("cannot write %s", qPrintable(path));
    file.write(content);
    written << name + u'/' + relative;
  }
  written.sort();
  return written;
}

QByteArray runIn(const QString& folder, const QString& program, const QStringList& arguments) {
  QProcess process;
  process.setWorkingDirectory(folder);
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("LC_ALL", "C.UTF-8");
  process.setProcessEnvironment(environment);
  process.setStandardInputFile(QProcess::nullDevice());
  process.start(program, arguments);
  if (!process.waitForFinished(120000) || process.exitCode() != 0) {
    qWarning("%s %s failed: %s", qPrintable(program), qPrintable(arguments.join(' ')),
             process.readAllStandardError().constData());
    return {};
  }
  return process.readAllStandardOutput();
}

QString makeArchive(const QString& folder, const QString& archive, const QString& program,
                    QStringList arguments, const QString& runFolder) {
  const QString path = QDir(folder).filePath(archive);
  QFile::remove(path);
  arguments.replaceInStrings("%A", path);
  runIn(runFolder.isEmpty() ? folder : runFolder, program, arguments);
  if (!QFileInfo::exists(path))
    qFatal("%s was not made", qPrintable(path));
  return path;
}

QString crcOfFile(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly))
    return {};
  const QByteArray data = file.readAll();
  const uLong crc = crc32(crc32(0L, Z_NULL, 0), reinterpret_cast<const Bytef*>(data.constData()),
                          static_cast<uInt>(data.size()));
  return QString::asprintf("%08lX", crc);
}

Tree treeUnder(const QString& root) {
  Tree tree;
  QDirIterator files(root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const QString path = files.next();
    tree.insert(QDir(root).relativeFilePath(path), contentOf(path));
  }
  return tree;
}

void writeFile(const QString& path, const QByteArray& content) {
  QDir().mkpath(QFileInfo(path).absolutePath());
  QFile file(path);
  if (!file.open(QIODevice::WriteOnly))
    qFatal("cannot write %s", qPrintable(path));
  file.write(content);
}

QByteArray contentOf(const QString& path) {
  QFile file(path);
  file.open(QIODevice::ReadOnly);
  return file.readAll();
}

QStringList sortedNamesOf(const ArchiveEntries& rows) {
  QStringList names;
  for (const ArchiveEntry& row : rows)
    names << row.name;
  names.sort();
  return names;
}

}  // namespace TestArchives
