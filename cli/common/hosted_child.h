// A question that a process of its own answers, in limited time.
#pragma once

#include <sys/types.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace varnix::cli {

class HostedChild {
 public:
  /// Starts the process. This one must have a single thread. The function's return value is the
  /// answer; an exception's text becomes the failure's.
  explicit HostedChild(const std::function<std::string()>& answer);
  /// Kills the process if nobody has waited for it.
  ~HostedChild();
  HostedChild(const HostedChild&) = delete;
  HostedChild& operator=(const HostedChild&) = delete;

  /// The answer. Throws Failure if the process failed or ran out of time, Death, with the library,
  /// if it died, and Interrupted.
  std::string wait(std::chrono::steady_clock::time_point deadline);

  /// Called in such a process when a wait for a person begins or ends. The wait does not count as
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
