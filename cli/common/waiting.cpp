#include "common/waiting.h"

#include <poll.h>

#include <algorithm>
#include <climits>
#include <iterator>

#include "common/interruption.h"

namespace varnix::cli {

namespace {

using Clock = std::chrono::steady_clock;

int millisecondsUntil(const Deadline& deadline) {
  if (!deadline) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
  return static_cast<int>(std::clamp<long long>(left, 0, INT_MAX));
}

}  // namespace

bool isOver(const Deadline& deadline) { return deadline && Clock::now() >= *deadline; }

bool isReadable(int descriptor) {
  pollfd ready{descriptor, POLLIN, 0};
  return poll(&ready, 1, 0) > 0;
}

bool awaitReadable(int descriptor, const Deadline& deadline) {
  while (true) {
    throwIfInterrupted();
    if (isOver(deadline)) return false;
    pollfd ready[] = {{descriptor, POLLIN, 0}, {interruptionDescriptor(), POLLIN, 0}};
    const int count = poll(ready, std::size(ready), millisecondsUntil(deadline));
    if (count > 0 && ready[0].revents != 0 && ready[1].revents == 0) return true;
  }
}

}  // namespace varnix::cli
