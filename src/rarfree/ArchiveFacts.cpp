#include "rarfree/ArchiveFacts.h"

#include "rarfree/FirstVolume.h"

#include <QFileInfo>
#include <QStringList>

namespace {

constexpr int kFirstAesVersion = 29;
const QString kRecordsStart = QStringLiteral("----------");
const QString kSeparator = QStringLiteral(" = ");

void setEntryValue(RarEntry& entry, const QString& key, const QString& value) {
  if (key == u"Path")
    entry.path = value;
  else if (key == u"Folder")
    entry.folder = value == u"+";
  else if (key == u"Size")
    entry.size = value.toLongLong();
  else if (key == u"Packed Size")
    entry.packedSize = value.toLongLong();
  else if (key == u"Modified")
    entry.modified = value;
  else if (key == u"Attributes")
    entry.attributes = value;
  else if (key == u"Encrypted")
    entry.encrypted = value == u"+";
  else if (key == u"CRC")
    entry.crc = value;
  else if (key == u"Method")
    entry.method = value;
  else if (key == u"Version")
    entry.version = value;
}

// The block above the records: the archive's own values, a comment in
// braces, and "ERROR = ..." or "ERRORS:" followed by the messages.
void readArchiveBlock(const QStringList& lines, qsizetype& i, ArchiveFacts& facts) {
  bool inComment = false;
  for (; i < lines.size() && lines[i] != kRecordsStart; ++i) {
    const QString& line = lines[i];
    if (inComment) {
      inComment = line != u"}";
    } else if (line == u"{") {
      inComment = true;
    } else if (line.startsWith(u"Type = ")) {
      facts.type = line.mid(7);
    } else if (line == u"Encrypted = +" ||
               (line.startsWith(u"Characteristics = ") && line.contains(u"BlockEncryption"))) {
      facts.headersEncrypted = true;
    } else if (line.startsWith(u"ERROR = ") && facts.problem.isEmpty()) {
      facts.problem = line.mid(8);
    } else if (line == u"ERRORS:" && i + 1 < lines.size() && facts.problem.isEmpty()) {
      facts.problem = lines[i + 1];
    }
  }
}

void readRecords(const QStringList& lines, qsizetype i, ArchiveFacts& facts) {
  RarEntry entry;
  for (; i < lines.size(); ++i) {
    const QString& line = lines[i];
    const qsizetype separator = line.indexOf(kSeparator);
    if (separator > 0) {
      setEntryValue(entry, line.left(separator), line.mid(separator + kSeparator.size()));
    } else if (line.isEmpty() && !entry.path.isEmpty()) {
      facts.entries << entry;
      entry = RarEntry();
    }
  }
  if (!entry.path.isEmpty())
    facts.entries << entry;
}

// "ERROR: /a/b.rar : Cannot open the file as archive" on standard error.
QString errorFrom(const QString& errors) {
  for (const QString& line : errors.split(u'\n')) {
    if (line.startsWith(u"ERROR: "))
      return line.mid(line.lastIndexOf(QStringLiteral(" : ")) + 3).trimmed();
  }
  return {};
}

void judgePassword(const QString& said, bool passwordGiven, ArchiveFacts& facts) {
  const bool cannotOpen = said.contains(u"Cannot open encrypted archive");
  if (said.contains(u"Enter password") || (cannotOpen && !passwordGiven)) {
    facts.passwordNeeded = facts.headersEncrypted = true;
    facts.problem = QStringLiteral("the file names are encrypted; a password is needed");
  } else if (cannotOpen) {
    facts.passwordRejected = facts.headersEncrypted = true;
    facts.problem = QStringLiteral("wrong password: it does not open the encrypted file names");
  }
}

}  // namespace

bool ArchiveFacts::hasRar4Aes() const {
  if (!isRar4())
    return false;
  if (headersEncrypted)
    return true;
  for (const RarEntry& entry : entries) {
    if (entry.encrypted && (entry.version.isEmpty() || entry.version.toInt() >= kFirstAesVersion))
      return true;
  }
  return false;
}

const RarEntry* ArchiveFacts::entryAt(const QString& path) const {
  const auto found = entryIndex.constFind(path);
  return found == entryIndex.cend() ? nullptr : &entries[*found];
}

ArchiveFacts parseArchiveFacts(const ToolOutput& sevenZip, bool passwordGiven) {
  ArchiveFacts facts;
  const QStringList lines = QString::fromUtf8(sevenZip.output).split(u'\n');
  qsizetype i = 0;
  while (i < lines.size() && lines[i] != u"--")
    ++i;
  readArchiveBlock(lines, i, facts);
  readRecords(lines, i + 1, facts);
  for (qsizetype at = 0; at < facts.entries.size(); ++at)
    facts.entryIndex.insert(facts.entries[at].path, at);
  if (facts.problem.isEmpty())
    facts.problem = errorFrom(QString::fromUtf8(sevenZip.errors));
  judgePassword(QString::fromUtf8(sevenZip.output + sevenZip.errors), passwordGiven, facts);
  if (facts.problem.isEmpty() && !sevenZip.succeeded())
    facts.problem =
        QStringLiteral("7-Zip could not read the whole archive (status %1)").arg(sevenZip.exitCode);
  return facts;
}

ArchiveFacts readArchiveFacts(const QString& archive, const std::optional<QString>& password) {
  // -spd: a "*" in the archive's name is part of the name, not a pattern.
  QStringList arguments = {QStringLiteral("l"), QStringLiteral("-slt"), QStringLiteral("-spd")};
  if (password)
    arguments << QStringLiteral("-p") + *password;
  arguments << QStringLiteral("--") << QFileInfo(firstVolumeOf(archive)).absoluteFilePath();
  return parseArchiveFacts(runFreeTool(QStringLiteral("7z"), arguments), password.has_value());
}
