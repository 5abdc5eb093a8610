#include "Dispatch/worker_pool.h"

#include <algorithm>
#include <system_error>
#include <thread>

#include "Foundation/log.h"
#include "objc/autorelease_pool.h"

namespace host::dispatch {

WorkerPool& WorkerPool::instance() {
  // Never destroyed: its threads run until the very end of the process.
  static auto* pool = new WorkerPool;
  return *pool;
}

WorkerPool::WorkerPool()
    : maximumThreads_(std::max<std::size_t>(2, std::thread::hardware_concurrency())) {}

void WorkerPool::enqueue(Priority priority, Work work) {
  const std::lock_guard lock(mutex_);
  pending_[static_cast<std::size_t>(priority)].push_back(std::move(work));
  ++pendingCount_;
  if (pendingCount_ > idle_ && threads_ < maximumThreads_) startThread();
  arrived_.notify_one();
}

void WorkerPool::startThread() {
  try {
    std::thread([this] { run(); }).detach();
    ++threads_;
  } catch (const std::system_error& error) {
    // Existing threads do the work; if there are none, the next enqueue tries again.
    log(LogLevel::error, std::string("no worker thread: ") + error.what());
  }
}

void WorkerPool::run() {
  while (true) {
    objc::AutoreleasePool pool;  // also covers the release of what the work holds
    take()();
  }
}

Work WorkerPool::take() {
  std::unique_lock lock(mutex_);
  ++idle_;
  arrived_.wait(lock, [this] { return pendingCount_ > 0; });
  --idle_;
  --pendingCount_;
  auto first = std::find_if_not(pending_.begin(), pending_.end(),
                                [](const auto& queue) { return queue.empty(); });
  Work work = std::move(first->front());
  first->pop_front();
  return work;
}

}  // namespace host::dispatch
