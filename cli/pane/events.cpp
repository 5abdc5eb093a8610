#include "pane/events.h"

#include <algorithm>
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
#include "common/nearest.h"
#include "process/programs.h"

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
  const auto programs = host::startedPrograms();
  for (; programs_ < programs.size(); ++programs_) {
    const host::StartedProgram& program = programs[programs_];
    if (!program.words.ends_with("killall -9 SpringBoard")) continue;
    std::cout << (program.hasStarted ? "restarts SpringBoard"
                                     : "cannot restart SpringBoard: no killall")
              << '\n';
  }
  auto* sheet = send<NSObject*>(page_(), "presentedViewController"_sel);
  if (sheet != nullptr && sheet != sheet_.get())
    std::cout << "composes  " << ask(sheet, "_initialText"_sel) << '\n';
  sheet_ = Strong<NSObject>::retain(sheet);
  NSObject* top = topAlert();
  if (top == alert_.get()) return;
  alert_ = Strong<NSObject>::retain(top);
  printAlert();
}

bool PaneEvents::hasAlert() const { return topAlert() != nullptr; }

std::vector<std::string> PaneEvents::buttons() const {
  std::vector<std::string> titles;
  const auto count = send<NSInteger>(topAlert(), "numberOfButtons"_sel);
  for (NSInteger i = 0; i < count; ++i)
    titles.push_back(words(send<NSString*>(topAlert(), "buttonTitleAtIndex:"_sel, i)));
  return titles;
}

void PaneEvents::press(const std::string& button) {
  if (!hasAlert()) throw Failure("no alert is shown", "press " + button);
  const std::vector<std::string> titles = buttons();
  std::size_t index = 0;
  const char* end = button.data() + button.size();
  const auto read = std::from_chars(button.data(), end, index);
  const bool isNumber = read.ec == std::errc{} && read.ptr == end;
  if (!isNumber || index >= titles.size())
    index = static_cast<std::size_t>(std::ranges::find(titles, button) - titles.begin());
  if (index == titles.size()) throw Failure("no such button", button + didYouMean(button, titles));
  auto pressed = Strong<NSObject>::retain(topAlert());
  alert_ = nullptr;
  host::pressAlertButton(pressed, static_cast<NSInteger>(index));
}

void PaneEvents::pressBarButton() {
  auto* item =
      send<NSObject*>(send<NSObject*>(page_(), "navigationItem"_sel), "rightBarButtonItem"_sel);
  if (item == nullptr) throw Failure("the bar has no such button", "bar");
  send<void>(item, "_press"_sel);
}

}  // namespace varnix::cli
