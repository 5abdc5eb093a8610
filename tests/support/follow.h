// The follow and share helpers as a pane uses them: alerts, accounts, requests, opened URLs, as
// text.
#pragma once

#include <string>
#include <vector>

#include "Accounts/accounts.h"
#include "Social/requests.h"
#include "UIKit/UIAlertView.h"
#include "UIKit/UIApplication_urls.h"
#include "objc/hook.h"
#include "process/container.h"
#include "support/pane.h"

namespace test {

using Lines = std::vector<std::string>;

inline NSArray* strings(const Lines& lines) {
  NSMutableArray* list = NSMutableArray::array();
  for (const std::string& line : lines)
    send(list, NSMutableArray::addObject, host::makeString(line));
  return list;
}

/// An object's description; "nil" for none.
inline std::string words(NSObject* object) {
  return object == nullptr ? "nil" : std::string(host::text(send(object, NSObject::description)));
}

/// What an object answers to a message without arguments.
template <objc::FixedString Name>
std::string answer(NSObject* object, objc::Selector<Name> selector) {
  return words(send<NSObject*>(object, selector));
}

class Follow : public Pane {
 protected:
  void SetUp() override { unsetenv("VARNIX_SOCIAL_HOST"); }

  static void show(NSString* title, NSString* message, NSString* username) {
    exported<void(NSString*, NSString*, NSString*)>("QKShowTwitterFollowAlert")(title, message,
                                                                                username);
  }
  static void openUsername(NSString* name) {
    exported<void(NSString*)>("QKOpenTwitterUsername")(name);
  }
  /// Puts a build's framework where the device has it.
  void installFramework(const std::string& name) const {
    const std::filesystem::path path =
        folder.path() + "/System/Library/Frameworks/" + name + ".framework/" + name;
    std::filesystem::create_directories(path.parent_path());
    const auto build = std::filesystem::path(host::defaultLibraryPath()).parent_path();
    std::filesystem::copy_file(build / "Frameworks" / (name + ".so"), path);
  }

  // Lists of alerts keep them alive: none outlasts the question.
  static NSUInteger alertCount() {
    const objc::AutoreleasePool pool;
    return send<NSUInteger>(host::shownAlerts(), "count"_sel);
  }
  /// The alert on screen that was shown last.
  static UIAlertView* alert() {
    const objc::AutoreleasePool pool;
    return static_cast<UIAlertView*>(send<NSObject*>(host::shownAlerts(), "lastObject"_sel));
  }
  static void press(NSInteger index) { host::pressAlertButton(alert(), index); }
  /// Title, message, tag and the buttons in order.
  static Lines texts(UIAlertView* alert) {
    Lines lines = {answer(alert, "title"_sel), answer(alert, "message"_sel),
                   std::to_string(send<NSInteger>(alert, "tag"_sel))};
    for (NSInteger i = 0; i < send<NSInteger>(alert, "numberOfButtons"_sel); ++i)
      lines.push_back(words(send<NSString*>(alert, "buttonTitleAtIndex:"_sel, i)));
    return lines;
  }

  static Lines opened() {
    Lines lines;
    NSArray* urls = host::openedURLs();
    for (NSUInteger i = 0; i < send<NSUInteger>(urls, "count"_sel); ++i)
      lines.push_back(words(send(urls, NSArray::objectAtIndex, i)));
    return lines;
  }
  /// One line a request: the account's name and what it asks for.
  static Lines requests() {
    Lines lines;
    NSArray* list = host::performedRequests();
    for (NSUInteger i = 0; i < send<NSUInteger>(list, "count"_sel); ++i) {
      NSObject* request = send(list, NSArray::objectAtIndex, i);
      auto* parameters = send<NSDictionary*>(request, "parameters"_sel);
      lines.push_back(
          answer(send<NSObject*>(request, "account"_sel), "username"_sel) + ": " +
          answer(request, "serviceType"_sel) + " " +
          std::to_string(send<NSInteger>(request, "requestMethod"_sel)) + " " +
          answer(request, "URL"_sel) +
          " screen_name=" + words(send(parameters, NSDictionary::objectForKey, "screen_name"_ns)) +
          " follow=" + words(send(parameters, NSDictionary::objectForKey, "follow"_ns)) + " of " +
          std::to_string(send(parameters, NSDictionary::count)));
    }
    return lines;
  }
  /// The line of a request that follows "maker".
  static std::string follows(const std::string& account) {
    return account +
           ": com.apple.social.twitter 1 https://api.twitter.com/1.1/friendships/create.json "
           "screen_name=maker follow=FALSE of 2";
  }
};

}  // namespace test
