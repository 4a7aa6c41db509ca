#pragma once

#include <QString>

// What rar-free says: reports on standard output, and the one reason for a
// failure on standard error, where Quillet reads the last line.
namespace Console {

void say(const QString& line);
void sayReason(const QString& reason);

}  // namespace Console
