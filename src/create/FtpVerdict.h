#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

// What curl's standard error says about an FTP step. Only the text is
// judged, never the exit status.
namespace FtpVerdict {

struct Failure {
  enum class Kind { CouldNotResolve, ConnectFailed, ConnectionLost, Canceled, LoginFailed, Other };
  Kind kind;
  QString title;
  QString message;
};

// The failure the text (and, for an upload, the user's cancel) shows, or
// none when the step succeeded. A curl error that none of the known markers
// name is a failure as well, told in curl's own words.
std::optional<Failure> of(const QByteArray& errors, bool canceledByUser = false);

}  // namespace FtpVerdict
