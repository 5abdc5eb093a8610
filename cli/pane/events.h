// What a pane's buttons brought about: alerts, opened URLs, requests, a sheet.
#pragma once

#include <string>

#include "pane/settings_screen.h"

namespace varnix::cli {

/// Tells what is new since the last time, in lines for people.
class PaneEvents {
 public:
  explicit PaneEvents(const SettingsScreen& screen) : screen_(screen) {}

  /// Turns the main loop until it is idle, or for half a second at most until something is new
  /// where another thread is to answer; then prints what is new.
  void settle(bool awaitsAnswer = false);

  /// Presses a button of the alert on top. Throws Failure where there is none.
  void press(const std::string& button);
  /// Presses the button at the navigation bar's right. Throws Failure where there is none.
  void share();

 private:
  bool isNew() const;
  void printAlert() const;

  const SettingsScreen& screen_;
  NSUInteger openedURLs_ = 0;
  NSUInteger requests_ = 0;
  Strong<NSObject> alert_;
  Strong<NSObject> sheet_;
};

}  // namespace varnix::cli
