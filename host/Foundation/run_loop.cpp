#include "Foundation/run_loop.h"

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstdint>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <system_error>
#include <vector>

#include "objc/autorelease_pool.h"

namespace host {

using Clock = std::chrono::steady_clock;
using Deadline = std::optional<Clock::time_point>;  // none: no limit

namespace {

/// A duration too long for the clock is a year.
Deadline after(std::chrono::milliseconds duration) {
  return Clock::now() + std::min<std::chrono::milliseconds>(duration, std::chrono::years(1));
}

bool isOver(const Deadline& deadline) { return deadline && Clock::now() >= *deadline; }

/// For poll(): rounded up, so that the loop does not spin through the last millisecond.
int millisecondsUntil(const Deadline& deadline) {
  if (!deadline) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*deadline - Clock::now()).count();
  return left <= 0 ? 0 : static_cast<int>(std::min<long long>(left, INT_MAX));
}

template <class F>
auto withPool(const F& function) {
  objc::AutoreleasePool pool;
  return function();
}

}  // namespace

struct MainRunLoop::State {
  using Function = std::function<void()>;

  State() : wakeUp(eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC)) {
    if (wakeUp < 0) throw std::system_error(errno, std::generic_category(), "eventfd");
  }

  void wake() const {
    const std::uint64_t one = 1;
    // It fails only where the counter is full, and then the loop wakes anyway.
    [[maybe_unused]] const ssize_t written = write(wakeUp, &one, sizeof one);
  }

  /// Waits until something is ready or the time is over, and handles what is ready.
  void turn(const Deadline& deadline) {
    std::vector<pollfd> ready = wait(deadline);
    if (ready.front().revents != 0) {
      std::uint64_t count = 0;
      [[maybe_unused]] const ssize_t taken = read(wakeUp, &count, sizeof count);
    }
    for (std::size_t i = 1; i < ready.size(); ++i) {
      if (ready[i].revents != 0) readable(ready[i]);
    }
    runPerformed();
  }

  std::vector<pollfd> wait(const Deadline& deadline) {
    std::vector<pollfd> descriptors{{wakeUp, POLLIN, 0}};
    int timeout = millisecondsUntil(deadline);
    {
      std::lock_guard lock(mutex);
      for (const auto& [descriptor, function] : watched)
        descriptors.push_back({descriptor, POLLIN, 0});
      // A function that threw left others waiting, and their wake-up has been consumed.
      if (!performed.empty()) timeout = 0;
    }
    // After a signal nothing is ready in this turn.
    if (poll(descriptors.data(), descriptors.size(), timeout) < 0) {
      for (pollfd& descriptor : descriptors) descriptor.revents = 0;
    }
    return descriptors;
  }

  void readable(const pollfd& descriptor) {
    std::shared_ptr<Function> function;
    {
      std::lock_guard lock(mutex);
      auto found = watched.find(descriptor.fd);
      if (found == watched.end()) return;  // unwatched by a function before it in this turn
      function = found->second;
      if ((descriptor.revents & POLLNVAL) != 0) {
        watched.erase(found);  // closed: it would be reported for ever
        return;
      }
    }
    withPool(*function);
  }

  /// Functions that are added meanwhile wait for the next turn.
  void runPerformed() {
    std::size_t count = 0;
    {
      std::lock_guard lock(mutex);
      count = performed.size();
    }
    for (; count > 0; --count) {
      objc::AutoreleasePool pool;  // also covers the release of the function
      Function function;
      {
        std::lock_guard lock(mutex);
        if (performed.empty()) return;  // a nested loop ran them
        function = std::move(performed.front());
        performed.pop_front();
      }
      function();
    }
  }

  bool takeStop() { return stopped.exchange(false); }

  int wakeUp;
  std::atomic<bool> stopped = false;
  std::mutex mutex;
  std::map<int, std::shared_ptr<Function>> watched;
  std::deque<Function> performed;
};

MainRunLoop::MainRunLoop() : state_(new State) {}

MainRunLoop& MainRunLoop::instance() {
  static auto* loop = new MainRunLoop;
  return *loop;
}

void MainRunLoop::watch(int descriptor, std::function<void()> readable) {
  {
    std::lock_guard lock(state_->mutex);
    state_->watched[descriptor] = std::make_shared<State::Function>(std::move(readable));
  }
  state_->wake();
}

void MainRunLoop::unwatch(int descriptor) {
  std::lock_guard lock(state_->mutex);
  state_->watched.erase(descriptor);
}

void MainRunLoop::perform(std::function<void()> function) {
  {
    std::lock_guard lock(state_->mutex);
    state_->performed.push_back(std::move(function));
  }
  state_->wake();
}

void MainRunLoop::run() {
  while (!state_->takeStop()) state_->turn({});
}

void MainRunLoop::runFor(std::chrono::milliseconds duration) {
  const Deadline deadline = after(duration);
  while (!state_->takeStop() && !isOver(deadline)) state_->turn(deadline);
}

bool MainRunLoop::runUntil(const std::function<bool()>& condition,
                           std::chrono::milliseconds limit) {
  const Deadline deadline = after(limit);
  while (true) {
    if (withPool(condition)) return true;
    if (state_->takeStop() || isOver(deadline)) return false;
    state_->turn(deadline);
  }
}

void MainRunLoop::drain() { state_->turn(Clock::now()); }

void MainRunLoop::stop() {
  state_->stopped = true;
  state_->wake();
}

}  // namespace host
