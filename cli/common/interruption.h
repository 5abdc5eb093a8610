// Being asked to end: what was begun is taken away first.
#pragma once

#include <stdexcept>

namespace varnix::cli {

/// The number of the signal that asked for the end.
struct Interrupted : std::runtime_error {
  explicit Interrupted(int number) : std::runtime_error("interrupted"), signal(number) {}
  int signal;
};

/// From now on such a signal is noted, and calls that wait return: SIGINT, SIGTERM and SIGHUP where
/// they were not ignored, and SIGPIPE, so that a reader who goes away ends the command.
void noteInterruptions();
/// For a child, which its parent ends: it hears of none.
void leaveInterruptionsToParent();
/// Becomes readable with the first one; -1 where none is noted.
int interruptionDescriptor();
/// Throws Interrupted.
void throwIfInterrupted();

}  // namespace varnix::cli
