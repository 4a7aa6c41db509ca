#pragma once

#include <QString>

class ToolRunner;

// Whether a password opens a RAR archive, asked before an extraction that
// replaces existing files: with a wrong password the existing file of the
// same name can be lost.
namespace PasswordCheck {

enum class Verdict { NotEncrypted, Opens, Wrong };

struct Result {
  Verdict verdict;
  // Why the tool could not read the entries, when it said more than that
  // the password is wrong (a free RAR tool that cannot decrypt, say).
  QString reason;
};

// passwordSwitch is the "-p..." argument the extraction will use, or empty.
Result forRar(ToolRunner& runner, const QString& archive, const QString& passwordSwitch);

}  // namespace PasswordCheck
