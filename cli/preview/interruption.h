// Being asked to end: what was begun is taken away first.
#pragma once

#include <stdexcept>

namespace varnix::cli {

/// The number of the signal that asked for the end.
struct Interrupted : std::runtime_error {
  explicit Interrupted(int number) : std::runtime_error("interrupted"), signal(number) {}
  int signal;
};

/// From now on such a signal is noted, and calls that wait return.
void noteInterruptions();
/// Becomes readable with the first one.
int interruptionDescriptor();
/// Throws Interrupted.
void throwIfInterrupted();

}  // namespace varnix::cli
