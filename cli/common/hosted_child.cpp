#include "common/hosted_child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <iostream>
#include <iterator>
#include <string_view>
#include <utility>

#include "common/death_report.h"
#include "common/errors.h"
#include "common/interruption.h"

namespace varnix::cli {

namespace {

void closeBoth(const int (&ends)[2]) {
  close(ends[0]);
  close(ends[1]);
}

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

int notesOfThisProcess = -1;

/// Ends the process without running destructors, which the parent runs.
[[noreturn]] void runChild(int pipe, const std::function<std::string()>& answer) {
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  leaveInterruptionsToParent();
  tellOfDeath(pipe, Telling::place);
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
  int notes[2];
  if (pipe2(notes, O_CLOEXEC | O_NONBLOCK) != 0) {
    closeBoth(ends);
    failStart();
  }
  process_ = fork();
  if (process_ < 0) {
    closeBoth(ends);
    closeBoth(notes);
    failStart();
  }
  if (process_ == 0) {
    close(ends[0]);
    close(notes[0]);
    notesOfThisProcess = notes[1];
    runChild(ends[1], answer);
  }
  close(ends[1]);
  close(notes[1]);
  pipe_ = ends[0];
  notes_ = notes[0];
}

void HostedChild::noteWait() {
  const Clock::time_point now = Clock::now();
  // If this fails, the wait counts as the process's own time.
  [[maybe_unused]] const ssize_t written = write(notesOfThisProcess, &now, sizeof now);
}

void HostedChild::takeNotes() {
  Clock::time_point at;
  ssize_t length = 0;
  while ((length = read(notes_, &at, sizeof at)) == sizeof at) {
    if (waitsSince_) waited_ += at - *waitsSince_;
    waitsSince_ = waitsSince_ ? std::nullopt : std::optional(at);
  }
  if (length == 0) close(std::exchange(notes_, -1));
}

HostedChild::Clock::time_point HostedChild::end(Clock::time_point deadline) const {
  return deadline + waited_ + (waitsSince_ ? Clock::now() - *waitsSince_ : Clock::duration{});
}

HostedChild::~HostedChild() {
  if (process_ > 0) {
    kill(process_, SIGKILL);
    reap();
  }
  if (pipe_ >= 0) close(pipe_);
  if (notes_ >= 0) close(notes_);
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
    throwIfInterrupted();
    takeNotes();
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(end(deadline) - Clock::now()).count();
    if (left <= 0) throw Failure("a hosted process did not answer in time", "killed");
    pollfd ready[] = {
        {pipe_, POLLIN, 0}, {notes_, POLLIN, 0}, {interruptionDescriptor(), POLLIN, 0}};
    const int timeout = waitsSince_ ? -1 : static_cast<int>(left);
    if (poll(ready, std::size(ready), timeout) < 0 || ready[0].revents == 0) continue;
    const ssize_t length = read(pipe_, block, sizeof block);
    if (length < 0 && errno == EINTR) continue;
    if (length <= 0) return text;
    text.append(block, static_cast<std::size_t>(length));
  }
}

std::string HostedChild::wait(Clock::time_point deadline) {
  std::string text = readAll(deadline);
  const int status = reap();
  throwIfInterrupted();
  if (WIFSIGNALED(status)) {
    throw Death("a hosted process died" + text, WTERMSIG(status));
  }
  if (WEXITSTATUS(status) != 0) throw Failure("a hosted process failed", text);
  return text;
}

}  // namespace varnix::cli
