// What a pane's buttons brought about: alerts, opened URLs, requests, a sheet.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "objc/strong.h"
#include "platform/UIKit.h"
#include "runtime/send.h"

namespace varnix::cli {

/// Tells what is new since the last time, in lines for people.
class PaneEvents {
 public:
  /// The function answers the page on top.
  explicit PaneEvents(std::function<UIViewController*()> page) : page_(std::move(page)) {}

  /// Turns the main loop until it is idle, or for half a second at most until something is new
  /// where another thread is to answer; then prints what is new.
  void settle(bool awaitsAnswer = false);

  bool hasAlert() const;
  /// The titles of the buttons of the alert on top.
  std::vector<std::string> buttons() const;
  /// Presses a button of the alert on top: its number or its title. Throws Failure if there is
  /// none.
  void press(const std::string& button);
  /// Presses the button at the navigation bar's right. Throws Failure if there is none.
  void pressBarButton();

 private:
  bool isNew() const;
  void printAlert() const;

  std::function<UIViewController*()> page_;
  NSUInteger openedURLs_ = 0;
  NSUInteger requests_ = 0;
  std::size_t programs_ = 0;
  Strong<NSObject> alert_;
  Strong<NSObject> sheet_;
};

}  // namespace varnix::cli
