#include "app/HeadlessListing.h"

#include "engine/ArchiveOpener.h"
#include "engine/listing/EntryIcons.h"

#include <QFileInfo>

#include <cstdio>

int HeadlessListing::run(const QString& path, const QString& password) {
  // Opening changes Quillet's folder, so a relative path is resolved first.
  const QFileInfo file(path);
  const QString archive = file.absoluteFilePath();
  if (!file.isFile() || !file.isReadable()) {
    std::fprintf(stderr, "%s: %s\n", qUtf8Printable(path),
                 file.exists() ? "cannot be read" : "no such file");
    return Unreadable;
  }
  NoEntryIcons icons;
  ArchiveOpener opener(runner_, icons, *this);
  opener.open(archive);
  if (passwordAsked_ && !programMissing_) {
    if (password.isNull()) {
      std::fprintf(stderr, "%s: the archive is protected; a password is needed (--password).\n",
                   qUtf8Printable(archive));
      return PasswordNeeded;
    }
    opener.passwordEntered(password);
  }
  return programMissing_ ? ProgramMissing : Listed;
}

void HeadlessListing::showRows(const ArchiveEntries& rows) {
  QString text;
  text.reserve(rows.size() * 96);
  for (const ArchiveEntry& row : rows) {
    text += row.name;
    for (const QString* field :
         {&row.originalSize, &row.packedSize, &row.crc32, &row.dateModified}) {
      text += u'\t';
      text += *field;
    }
    text += u'\n';
  }
  const QByteArray bytes = text.toUtf8();
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
  std::fflush(stdout);
}

void HeadlessListing::reportProblem(const ToolProblem& problem) {
  if (problem.kind == ToolProblem::Kind::MissingProgram)
    programMissing_ = true;
  std::fprintf(stderr, "%s\n", qUtf8Printable(problem.message));
}
