#include "common/interruption.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>

#include "common/errors.h"

namespace varnix::cli {

namespace {

volatile std::sig_atomic_t noted = 0;
int ends[2] = {-1, -1};

void note(int number) {
  const int kept = errno;
  noted = number;
  // If the pipe is full it is readable anyway.
  if (write(ends[1], "", 1) < 0) errno = kept;
}

bool isIgnored(int number) {
  struct sigaction old = {};
  return sigaction(number, nullptr, &old) == 0 && old.sa_handler == SIG_IGN;
}

}  // namespace

void noteInterruptions() {
  if (ends[0] >= 0) return;
  if (pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) throw Failure("cannot begin", std::strerror(errno));
  struct sigaction action = {};
  action.sa_handler = note;
  for (int number : {SIGINT, SIGTERM, SIGHUP}) {
    if (!isIgnored(number)) sigaction(number, &action, nullptr);
  }
  sigaction(SIGPIPE, &action, nullptr);
}

void leaveInterruptionsToParent() {
  for (int number : {SIGINT, SIGTERM, SIGHUP}) std::signal(number, SIG_IGN);
  std::signal(SIGPIPE, SIG_DFL);
  for (int& end : ends) {
    if (end >= 0) close(end);
    end = -1;
  }
}

int interruptionDescriptor() { return ends[0]; }

void throwIfInterrupted() {
  if (noted != 0) throw Interrupted(noted);
}

}  // namespace varnix::cli
