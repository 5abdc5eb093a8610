// The main run loop: file descriptors, timers and functions from other threads, all on the main
// thread.
#pragma once

#include <chrono>
#include <functional>

#include "export.h"

namespace host {

class HOST_EXPORT MainRunLoop {
 public:
  static MainRunLoop& instance();

  /// Calls the function on the main thread whenever the descriptor is readable.
  void watch(int descriptor, std::function<void()> readable);
  void unwatch(int descriptor);

  /// Runs the function on the main thread at the loop's next turn. May be called on any thread;
  /// functions run in order.
  void perform(std::function<void()> function);

  /// Runs until stop(), or until the time has passed.
  void run();
  void runFor(std::chrono::milliseconds duration);
  /// Runs until the condition is true; false if the time passed before that.
  bool runUntil(const std::function<bool()>& condition, std::chrono::milliseconds limit);
  /// Handles what is ready and returns at once.
  void drain();
  /// May be called on any thread.
  void stop();

 private:
  MainRunLoop();
  struct State;
  State* state_;  ///< lives as long as the process
};

}  // namespace host
