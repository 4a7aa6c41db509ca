#pragma once

#include <QString>

class ToolRunner;

// Whether a password opens an archive, asked before an extraction that
// replaces existing files: with a wrong password 7-Zip empties an existing
// file of the same name before it finds out, and the user's data is gone.
namespace PasswordCheck {

enum class Verdict { NotEncrypted, Opens, Wrong };

struct Result {
  Verdict verdict;
  // Why the tool could not read the entries, when it said more than that
  // the password is wrong (a free RAR tool that cannot decrypt, say).
  QString reason;
};

// passwordSwitch is the "-p..." argument the extraction will use, or empty.
// The smallest encrypted entry is tested with it, which is quick.
Result forSevenZip(ToolRunner& runner, const QString& archive, const QString& passwordSwitch);
Result forRar(ToolRunner& runner, const QString& archive, const QString& passwordSwitch);

}  // namespace PasswordCheck
