// Requests to end: the command removes unfinished work before it ends.
#pragma once

#include <stdexcept>

namespace varnix::cli {

/// Carries the number of the signal that asked for the end.
struct Interrupted : std::runtime_error {
  explicit Interrupted(int number) : std::runtime_error("interrupted"), signal(number) {}
  int signal;
};

/// From now on such signals are noted, and calls that wait return early: SIGINT, SIGTERM and SIGHUP
/// unless they were ignored, and SIGPIPE, so that the command ends when its reader goes away.
void noteInterruptions();
/// For a child process, which its parent ends: it ignores such signals.
void leaveInterruptionsToParent();
/// Becomes readable at the first signal; -1 if signals are not noted.
int interruptionDescriptor();
/// Throws Interrupted.
void throwIfInterrupted();

}  // namespace varnix::cli
