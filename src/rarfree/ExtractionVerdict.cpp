#include "rarfree/ExtractionVerdict.h"

#include "rarfree/Texts.h"

#include <QSet>
#include <QStringList>

#include <algorithm>

namespace fs = std::filesystem;

namespace {

constexpr qsizetype kNamesInReason = 3;

bool anyFileMoved(const QList<MergedItem>& items) {
  for (const MergedItem& item : items) {
    if (item.result == MergedItem::Result::Moved && !item.isFolder)
      return true;
  }
  return false;
}

QString notExtracted(const QList<Failure>& failures) {
  QStringList named;
  for (const Failure& failure : failures.first(std::min(failures.size(), kNamesInReason)))
    named << failure.name + QStringLiteral(" (") + failure.why + u')';
  if (failures.size() > kNamesInReason)
    named << QStringLiteral("...");
  const QString count = failures.size() == 1 ? QStringLiteral("1 entry")
                                             : QStringLiteral("%1 entries").arg(failures.size());
  return count + QStringLiteral(" not extracted: ") + named.join(QStringLiteral(", "));
}

}  // namespace

QString ExtractionVerdict::unsoundFile(const QString& name, const fs::path& file) const {
  if (const QString reason = unar_.failureOf(name); !reason.isEmpty())
    return failureWords(name, reason);
  const RarEntry* entry = facts_.entryAt(name);
  std::error_code error;
  const auto size = static_cast<qint64>(fs::file_size(file, error));
  if (entry && !entry->folder && !error && size != entry->size)
    return QStringLiteral("incomplete: %1 of %2 bytes").arg(size).arg(entry->size);
  return {};
}

QList<Failure> ExtractionVerdict::failures(const QList<MergedItem>& items) const {
  QList<Failure> found;
  QSet<QString> names;
  for (const MergedItem& item : items) {
    if (item.result == MergedItem::Result::Refused) {
      found.append({item.name, item.why});
      names << item.name;
    }
  }
  for (const auto& [name, reason] : unar_.failures) {
    if (!names.contains(name))
      found.append({name, failureWords(name, reason)});
  }
  return found;
}

bool ExtractionVerdict::succeeded(const QList<Failure>& failures) const {
  return unar_.exitedCleanly && !unar_.nothingExtracted && !unar_.parsingFailed &&
         failures.isEmpty();
}

QString ExtractionVerdict::reason(const QList<MergedItem>& items,
                                  const QList<Failure>& failures) const {
  if (unar_.passwordNeeded || facts_.passwordNeeded)
    return QStringLiteral("a password is needed to extract this archive");
  if (facts_.passwordRejected || (allWrongPassword() && !anyFileMoved(items)))
    return QStringLiteral("wrong password");
  if (facts_.hasRar4Aes())
    return Texts::kRar4Encryption;
  if (unar_.parsingFailed)
    return QStringLiteral("the archive is damaged or incomplete: ") +
           (facts_.problem.isEmpty() ? unar_.parsingFailure : facts_.problem);
  if (unar_.nothingExtracted)
    return QStringLiteral("No files extracted.") +
           (facts_.problem.isEmpty() ? QString() : QStringLiteral(" (") + facts_.problem + u')');
  if (!failures.isEmpty())
    return notExtracted(failures);
  return QStringLiteral("unar did not finish the extraction");
}

QString ExtractionVerdict::failureWords(const QString& name, const QString& reason) const {
  const RarEntry* entry = facts_.entryAt(name);
  if (entry && entry->encrypted && !facts_.hasRar4Aes())
    return QStringLiteral("this password does not open it; unar: ") + reason;
  return QStringLiteral("unar: ") + reason;
}

bool ExtractionVerdict::allWrongPassword() const {
  for (const auto& [name, reason] : unar_.failures) {
    if (!reason.contains(u"wrong password"))
      return false;
  }
  return !unar_.failures.isEmpty();
}
