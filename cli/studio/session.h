// One run of the studio: the theme, who waits for news of it, and the thread that follows its file.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <optional>
#include <string>
#include <thread>

#include "common/json_forward.h"
#include "studio/painter.h"
#include "studio/theme.h"

namespace varnix::cli {

/// For several threads at once.
class Session {
 public:
  /// Throws Failure.
  explicit Session(std::optional<std::string> file);
  /// Saves what is not saved yet.
  ~Session();
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  /// Starts following the file. From here on this process has several threads.
  void begin();
  /// Whoever waits for news returns.
  void end();

  /// Calls the function with the theme, and tells everybody if that changed it.
  void with(const std::function<void(Theme&)>& use);
  Json json();
  /// The same, as soon as its version is not the known one, or after that time.
  Json news(long known, std::chrono::milliseconds patience);
  Shown shown();

 private:
  void follow();
  void tell(const std::function<void(Theme&)>& use);

  std::mutex mutex_;
  std::condition_variable changed_;
  Theme theme_;
  std::optional<std::string> file_;
  bool isEnding_ = false;
  Shown shown_;
  int wake_ = -1;   ///< an eventfd, for the thread
  int watch_ = -1;  ///< the inotify instance
  std::thread thread_;
};

}  // namespace varnix::cli
