#pragma once

#include <QDeadlineTimer>
#include <QString>
#include <QUrl>

#include <optional>

// A small text file fetched over HTTP, waited for with the event loop
// turning and user input held back.
namespace HttpText {

// The file's text (UTF-8), or nothing when it cannot be had: no
// connection, an error status, or no answer before the deadline.
std::optional<QString> fetch(const QUrl& url, QDeadlineTimer deadline);

}  // namespace HttpText
