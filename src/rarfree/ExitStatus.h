#pragma once

// rar-free's exit statuses. Quillet shows its missing-program alert for
// 127 from a program in its tools folder.
namespace ExitStatus {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kProgramMissing = 127;

}  // namespace ExitStatus
