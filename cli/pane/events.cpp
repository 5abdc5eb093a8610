#include "pane/events.h"

#include <charconv>
#include <chrono>
#include <iostream>

#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "Social/requests.h"
#include "UIKit/UIAlertView.h"
#include "UIKit/UIApplication_urls.h"
#include "common/errors.h"
#include "common/main_loop.h"

namespace varnix::cli {

namespace {

constexpr std::chrono::milliseconds kPatience{500};

std::string words(NSObject* object) {
  return object == nullptr ? "" : std::string(host::text(send(object, NSObject::description)));
}

template <objc::FixedString Name>
std::string ask(NSObject* object, objc::Selector<Name> question) {
  return words(send<NSObject*>(object, question));
}

NSUInteger count(NSArray* list) { return send<NSUInteger>(list, "count"_sel); }

NSObject* topAlert() { return send<NSObject*>(host::shownAlerts(), "lastObject"_sel); }

std::string requestLine(NSObject* request) {
  auto* parameters = send<NSDictionary*>(request, "parameters"_sel);
  auto* account = send<NSObject*>(request, "account"_sel);
  auto parameter = [&](NSString* name) {
    return words(send<NSObject*>(parameters, "objectForKey:"_sel, name));
  };
  return "request   " + ask(request, "URL"_sel) + " screen_name=" + parameter("screen_name"_ns) +
         " follow=" + parameter("follow"_ns) + " as " + ask(account, "username"_sel);
}

}  // namespace

bool PaneEvents::isNew() const {
  return count(host::openedURLs()) != openedURLs_ ||
         count(host::performedRequests()) != requests_ || topAlert() != alert_.get();
}

void PaneEvents::printAlert() const {
  if (alert_.get() == nullptr) return;
  const std::string title = ask(alert_.get(), "title"_sel);
  std::cout << "alert     " << title << (title.empty() ? "" : ": ")
            << ask(alert_.get(), "message"_sel) << '\n';
  const auto buttons = send<NSInteger>(alert_, "numberOfButtons"_sel);
  for (NSInteger i = 0; i < buttons; ++i) {
    std::cout << "  press " << i << "  "
              << words(send<NSString*>(alert_, "buttonTitleAtIndex:"_sel, i)) << '\n';
  }
}

void PaneEvents::settle(bool awaitsAnswer) {
  if (awaitsAnswer) host::MainRunLoop::instance().runUntil([this] { return isNew(); }, kPatience);
  settleMainLoop();
  NSArray* requests = host::performedRequests();
  for (; requests_ < count(requests); ++requests_)
    std::cout << requestLine(send(requests, NSArray::objectAtIndex, requests_)) << '\n';
  NSArray* urls = host::openedURLs();
  for (; openedURLs_ < count(urls); ++openedURLs_)
    std::cout << "opened    " << words(send(urls, NSArray::objectAtIndex, openedURLs_)) << '\n';
  auto* sheet = send<NSObject*>(screen_.pane, "presentedViewController"_sel);
  if (sheet != nullptr && sheet != sheet_.get())
    std::cout << "composes  " << ask(sheet, "_initialText"_sel) << '\n';
  sheet_ = Strong<NSObject>::retain(sheet);
  NSObject* top = topAlert();
  if (top == alert_.get()) return;
  alert_ = Strong<NSObject>::retain(top);
  printAlert();
}

void PaneEvents::press(const std::string& button) {
  if (topAlert() == nullptr) throw Failure("no alert is shown", "press " + button);
  NSInteger index = -1;
  const char* end = button.data() + button.size();
  const auto read = std::from_chars(button.data(), end, index);
  const auto buttons = send<NSInteger>(topAlert(), "numberOfButtons"_sel);
  if (read.ec != std::errc{} || read.ptr != end || index < 0 || index >= buttons)
    throw Failure("no such button", button);
  auto pressed = Strong<NSObject>::retain(topAlert());
  alert_ = nullptr;
  host::pressAlertButton(pressed, index);
}

void PaneEvents::share() {
  auto* item = send<NSObject*>(send<NSObject*>(screen_.pane, "navigationItem"_sel),
                               "rightBarButtonItem"_sel);
  if (item == nullptr) throw Failure("the bar has no such button", "share");
  send<void>(item, "_press"_sel);
}

}  // namespace varnix::cli
