// A question answered by a process of its own, with a limit on its time.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace varnix::cli {

class HostedChild {
 public:
  /// Starts the process; to be called while this one has a single thread. What the function
  /// returns is the answer; what it throws is the failure's text.
  explicit HostedChild(const std::function<std::string()>& answer);
  /// Kills what has not been waited for.
  ~HostedChild();
  HostedChild(const HostedChild&) = delete;
  HostedChild& operator=(const HostedChild&) = delete;

  /// The answer. Throws Failure where the process failed or ran out of time, Death where it died,
  /// with the library that it died in, and Interrupted.
  std::string wait(std::chrono::steady_clock::time_point deadline);

  /// In such a process: a wait for a person begins, or the one that began is over. It is no part of
  /// the process's time.
  static void noteWait();

 private:
  using Clock = std::chrono::steady_clock;

  void takeNotes();
  Clock::time_point end(Clock::time_point deadline) const;
  std::string readAll(std::chrono::steady_clock::time_point deadline);
  int reap();

  pid_t process_ = -1;
  int pipe_ = -1;
  int notes_ = -1;  ///< the time of each beginning and end of a wait
  std::optional<Clock::time_point> waitsSince_;
  Clock::duration waited_{};
};

}  // namespace varnix::cli
