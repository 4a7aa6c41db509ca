#include "rarfree/ListCommand.h"

#include "rarfree/Console.h"
#include "rarfree/ExitStatus.h"

int listArchive(const CommandLine& line, const RarStyleListing& layout) {
  const ArchiveFacts facts = readArchiveFacts(line.archive(), line.password);
  Console::say(layout.print(line.archive(), facts));
  if (facts.problem.isEmpty())
    return ExitStatus::kDone;
  Console::sayReason(facts.problem);
  return ExitStatus::kFailed;
}
