#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <sys/types.h>
#include <functional>

// One child process with pipes on its three standard streams, driven by
// plain blocking calls so that a thread can pump its output cheaply.
class ChildProcess {
 public:
  struct Exit {
    int code = -1;
    bool signalled = false;
  };

  ChildProcess() = default;
  ChildProcess(const ChildProcess&) = delete;
  ChildProcess& operator=(const ChildProcess&) = delete;
  ~ChildProcess();

  // Launches program (a path, or a name looked up in PATH) in the folder,
  // with LC_ALL=C.UTF-8. False when it could not be started.
  bool start(const QString& program, const QStringList& arguments, const QString& folder);
  pid_t pid() const { return pid_; }

  // Writes the input and closes standard input, hands every piece of
  // output to the callbacks as it arrives, and returns when both output
  // streams have ended.
  void pump(const QByteArray& input, const std::function<void(const char*, qsizetype)>& output,
            const std::function<void(const char*, qsizetype)>& errors);
  Exit wait();

 private:
  void closeAll();

  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  int errors_ = -1;
};
