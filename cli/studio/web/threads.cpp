#include "studio/web/threads.h"

#include <system_error>
#include <thread>
#include <utility>

namespace varnix::cli::web {

namespace {

thread_local bool tooMany = false;

void refuse(const std::function<void()>& work) {
  tooMany = true;
  work();
  tooMany = false;
}

}  // namespace

bool Threads::isTooMany() { return tooMany; }

void Threads::enqueue(std::function<void()> work) {
  {
    const std::lock_guard lock(mutex_);
    if (count_ < most_) ++count_;
    else return refuse(work);
  }
  auto run = [this, work] {
    work();
    // The last thing that uses this object: the end may be waiting for the lock.
    const std::lock_guard lock(mutex_);
    --count_;
    ended_.notify_all();
  };
  try {
    std::thread(std::move(run)).detach();
  } catch (const std::system_error&) {
    const std::lock_guard lock(mutex_);
    --count_;
    refuse(work);
  }
}

void Threads::shutdown() {
  std::unique_lock lock(mutex_);
  ended_.wait(lock, [this] { return count_ == 0; });
}

}  // namespace varnix::cli::web
