#include "hosted_child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <string_view>

#include "errors.h"

namespace varnix::cli {

namespace {

using Clock = std::chrono::steady_clock;

[[noreturn]] void failStart() { throw Failure("cannot start a process", std::strerror(errno)); }

bool writeAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

/// Ends without running the parent's destructors, which are the parent's business.
[[noreturn]] void runChild(int pipe, const std::function<std::string()>& answer) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  // What an extension prints is not part of our output.
  dup2(STDERR_FILENO, STDOUT_FILENO);
  int status = 0;
  std::string text;
  try {
    text = answer();
  } catch (const std::exception& error) {
    text = error.what();
    status = 1;
  }
  if (!writeAll(pipe, text)) status = 1;
  _exit(status);
}

}  // namespace

HostedChild::HostedChild(const std::function<std::string()>& answer) {
  std::cout.flush();
  int ends[2];
  if (pipe2(ends, O_CLOEXEC) != 0) failStart();
  process_ = fork();
  if (process_ < 0) {
    close(ends[0]);
    close(ends[1]);
    failStart();
  }
  if (process_ == 0) {
    close(ends[0]);
    runChild(ends[1], answer);
  }
  close(ends[1]);
  pipe_ = ends[0];
}

HostedChild::~HostedChild() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    reap();
  }
  if (pipe_ >= 0) close(pipe_);
}

int HostedChild::reap() {
  int status = 0;
  while (waitpid(process_, &status, 0) < 0 && errno == EINTR) {
  }
  process_ = -1;
  return status;
}

std::string HostedChild::readAll(Clock::time_point deadline) {
  std::string text;
  char block[4096];
  while (true) {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now()).count();
    pollfd ready{pipe_, POLLIN, 0};
    const int count = left <= 0 ? 0 : poll(&ready, 1, static_cast<int>(left));
    if (count < 0 && errno == EINTR) continue;
    if (count == 0) throw Failure("a hosted process did not answer in time", "killed");
    const ssize_t length = read(pipe_, block, sizeof block);
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0) return text;
    text.append(block, static_cast<std::size_t>(length));
  }
}

std::string HostedChild::wait(Clock::time_point deadline) {
  std::string text = readAll(deadline);
  const int status = reap();
  if (WIFSIGNALED(status)) {
    throw Failure("a hosted process died", strsignal(WTERMSIG(status)));
  }
  if (WEXITSTATUS(status) != 0) throw Failure("a hosted process failed", text);
  return text;
}

}  // namespace varnix::cli
