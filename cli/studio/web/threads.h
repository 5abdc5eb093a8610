// A thread for each connection, up to a limit.
#pragma once

#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>

#include <httplib.h>

namespace varnix::cli::web {

class Threads final : public httplib::TaskQueue {
 public:
  explicit Threads(std::size_t most) : most_(most) {}

  /// Whether the work that is called on this thread came when there were too many.
  static bool isTooMany();

  void enqueue(std::function<void()> work) override;
  /// Waits for all threads.
  void shutdown() override;

 private:
  std::size_t most_;
  std::mutex mutex_;
  std::condition_variable ended_;
  std::size_t count_ = 0;
};

}  // namespace varnix::cli::web
