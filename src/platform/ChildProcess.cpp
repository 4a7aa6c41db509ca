#include "platform/ChildProcess.h"

#include <QFile>

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <array>
#include <cerrno>
#include <csignal>
#include <memory>
#include <vector>

extern char** environ;

namespace {

constexpr size_t kReadSize = 1 << 20;
constexpr int kPipeSize = 1 << 20;
constexpr useconds_t kGatherMicroseconds = 1000;
constexpr qsizetype kLongOutput = 1 << 20;

std::vector<QByteArray> toolEnvironment() {
  std::vector<QByteArray> variables;
  for (char** variable = environ; *variable; ++variable) {
    if (qstrncmp(*variable, "LC_ALL=", 7) != 0)
      variables.emplace_back(*variable);
  }
  variables.emplace_back("LC_ALL=C.UTF-8");
  return variables;
}

std::vector<char*> pointersTo(std::vector<QByteArray>& texts) {
  std::vector<char*> pointers;
  for (QByteArray& text : texts)
    pointers.push_back(text.data());
  pointers.push_back(nullptr);
  return pointers;
}

void closeFd(int& fd) {
  if (fd >= 0)
    ::close(fd);
  fd = -1;
}

}  // namespace

ChildProcess::~ChildProcess() {
  closeAll();
  if (pid_ > 0)
    wait();
}

void ChildProcess::closeAll() {
  closeFd(input_);
  closeFd(output_);
  closeFd(errors_);
}

bool ChildProcess::start(const QString& program, const QStringList& arguments,
                         const QString& folder) {
  int inputPipe[2], outputPipe[2], errorPipe[2];
  if (pipe2(inputPipe, O_CLOEXEC) != 0)
    return false;
  if (pipe2(outputPipe, O_CLOEXEC) != 0 || pipe2(errorPipe, O_CLOEXEC) != 0) {
    ::close(inputPipe[0]);
    ::close(inputPipe[1]);
    return false;
  }

  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, inputPipe[0], 0);
  posix_spawn_file_actions_adddup2(&actions, outputPipe[1], 1);
  posix_spawn_file_actions_adddup2(&actions, errorPipe[1], 2);
  const QByteArray directory = QFile::encodeName(folder);
  if (!folder.isEmpty())
    posix_spawn_file_actions_addchdir_np(&actions, directory.constData());

  // Quillet ignores SIGPIPE; its children must not inherit that.
  posix_spawnattr_t attributes;
  posix_spawnattr_init(&attributes);
  sigset_t defaults, none;
  sigemptyset(&defaults);
  sigaddset(&defaults, SIGPIPE);
  sigemptyset(&none);
  posix_spawnattr_setsigdefault(&attributes, &defaults);
  posix_spawnattr_setsigmask(&attributes, &none);
  posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSIGMASK);

  std::vector<QByteArray> argumentTexts{QFile::encodeName(program)};
  for (const QString& argument : arguments)
    argumentTexts.push_back(QFile::encodeName(argument));
  std::vector<char*> argv = pointersTo(argumentTexts);
  std::vector<QByteArray> environmentTexts = toolEnvironment();
  std::vector<char*> envp = pointersTo(environmentTexts);

  const bool searched = !program.contains(u'/');
  const int failed =
      searched ? posix_spawnp(&pid_, argv[0], &actions, &attributes, argv.data(), envp.data())
               : posix_spawn(&pid_, argv[0], &actions, &attributes, argv.data(), envp.data());
  posix_spawn_file_actions_destroy(&actions);
  posix_spawnattr_destroy(&attributes);
  ::close(inputPipe[0]);
  ::close(outputPipe[1]);
  ::close(errorPipe[1]);
  input_ = inputPipe[1];
  output_ = outputPipe[0];
  fcntl(output_, F_SETPIPE_SZ, kPipeSize);
  errors_ = errorPipe[0];
  if (failed != 0) {
    pid_ = -1;
    closeAll();
    return false;
  }
  return true;
}

void ChildProcess::pump(const QByteArray& input,
                        const std::function<void(const char*, qsizetype)>& output,
                        const std::function<void(const char*, qsizetype)>& errors) {
  qsizetype written = 0;
  qsizetype received = 0;
  if (input.isEmpty())
    closeFd(input_);
  const auto buffer = std::make_unique_for_overwrite<char[]>(kReadSize);
  while (output_ >= 0 || errors_ >= 0) {
    std::array<pollfd, 3> watched{
        {{output_, POLLIN, 0}, {errors_, POLLIN, 0}, {input_, POLLOUT, 0}}};
    if (::poll(watched.data(), watched.size(), -1) < 0) {
      if (errno == EINTR)
        continue;
      break;
    }
    if (watched[2].revents) {
      const ssize_t count =
          ::write(input_, input.constData() + written, static_cast<size_t>(input.size() - written));
      if (count > 0)
        written += count;
      if (count < 0 || written == input.size())
        closeFd(input_);
    }
    for (auto [index, fd, callback] :
         {std::tuple{0, &output_, &output}, std::tuple{1, &errors_, &errors}}) {
      if (!watched[index].revents)
        continue;
      const ssize_t count = ::read(*fd, buffer.get(), kReadSize);
      if (count > 0) {
        (*callback)(buffer.get(), count);
        // A tool writes a few kilobytes at a time; once it turns out to
        // print a lot, letting them gather in the pipe saves a wake-up per
        // write. Short runs are not held up.
        received += count;
        if (received > kLongOutput && static_cast<size_t>(count) < kReadSize / 4)
          ::usleep(kGatherMicroseconds);
      } else if (count == 0 || errno != EINTR) {
        closeFd(*fd);
      }
    }
  }
  closeFd(input_);
}

ChildProcess::Exit ChildProcess::wait() {
  int status = 0;
  pid_t reaped;
  do {
    reaped = ::waitpid(pid_, &status, 0);
  } while (reaped < 0 && errno == EINTR);
  pid_ = -1;
  if (reaped < 0)
    return {};
  if (WIFSIGNALED(status))
    return {-1, true};
  return {WEXITSTATUS(status), false};
}
