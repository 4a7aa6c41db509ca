#pragma once

#include "rarfree/ArchiveFacts.h"
#include "rarfree/FolderMerge.h"
#include "rarfree/UnarReport.h"

#include <QList>
#include <QString>

#include <filesystem>

// An entry that did not reach the destination, and why.
struct Failure {
  QString name;
  QString why;
};

// Judges an extraction by what unar reported and what 7-Zip read from the
// headers: which files may move into the destination, whether everything
// arrived, and the one reason shown when not.
class ExtractionVerdict {
 public:
  ExtractionVerdict(const UnarReport& unar, const ArchiveFacts& facts)
      : unar_(unar), facts_(facts) {}

  // Why a file unar wrote must not reach the destination; empty when it
  // may. A file shorter or longer than its header says is caught even when
  // unar's report of it was not understood.
  QString unsoundFile(const QString& name, const std::filesystem::path& file) const;
  // The refused items and the entries unar failed on, each once.
  QList<Failure> failures(const QList<MergedItem>& items) const;
  bool succeeded(const QList<Failure>& failures) const;
  QString reason(const QList<MergedItem>& items, const QList<Failure>& failures) const;

 private:
  QString failureWords(const QString& name, const QString& reason) const;
  bool allWrongPassword() const;

  const UnarReport& unar_;
  const ArchiveFacts& facts_;
};
