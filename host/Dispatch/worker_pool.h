// The threads behind the global queues.
#pragma once

#include <array>
#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>

#include "Dispatch/queue_object.h"

namespace host::dispatch {

/// From the highest priority to the lowest.
enum class Priority : std::size_t { high, normal, low, background };
inline constexpr std::size_t kPriorities = 4;

/// Starts threads as work arrives, a few at most. They wait for more until the process ends.
class WorkerPool {
 public:
  static WorkerPool& instance();

  /// Work of a higher priority begins first; within one priority, the earliest.
  void enqueue(Priority priority, Work work);

 private:
  WorkerPool();
  void startThread();
  [[noreturn]] void run();
  Work take();

  const std::size_t maximumThreads_;
  std::mutex mutex_;
  std::condition_variable arrived_;
  std::array<std::deque<Work>, kPriorities> pending_;
  std::size_t pendingCount_ = 0;
  std::size_t threads_ = 0;
  std::size_t idle_ = 0;
};

}  // namespace host::dispatch
