#include "support/follow.h"

namespace test {

NSArray* strings(const Lines& lines) {
  NSMutableArray* list = NSMutableArray::array();
  for (const std::string& line : lines)
    send(list, NSMutableArray::addObject, host::makeString(line));
  return list;
}

std::string words(NSObject* object) {
  return object == nullptr ? "nil" : std::string(host::text(send(object, NSObject::description)));
}

void Follow::show(NSString* title, NSString* message, NSString* username) {
  exported<void(NSString*, NSString*, NSString*)>("QKShowTwitterFollowAlert")(title, message,
                                                                              username);
}

void Follow::openUsername(NSString* name) {
  exported<void(NSString*)>("QKOpenTwitterUsername")(name);
}

void Follow::installFramework(const std::string& name) const {
  const std::filesystem::path path =
      folder.path() + "/System/Library/Frameworks/" + name + ".framework/" + name;
  std::filesystem::create_directories(path.parent_path());
  const auto build = std::filesystem::path(host::defaultLibraryPath()).parent_path();
  std::filesystem::copy_file(build / "Frameworks" / (name + ".so"), path);
}

NSUInteger Follow::alertCount() {
  const objc::AutoreleasePool pool;
  return send<NSUInteger>(host::shownAlerts(), "count"_sel);
}

UIAlertView* Follow::alert() {
  const objc::AutoreleasePool pool;
  return static_cast<UIAlertView*>(send<NSObject*>(host::shownAlerts(), "lastObject"_sel));
}

Lines Follow::texts(UIAlertView* alert) {
  Lines lines = {answer(alert, "title"_sel), answer(alert, "message"_sel),
                 std::to_string(send<NSInteger>(alert, "tag"_sel))};
  for (NSInteger i = 0; i < send<NSInteger>(alert, "numberOfButtons"_sel); ++i)
    lines.push_back(words(send<NSString*>(alert, "buttonTitleAtIndex:"_sel, i)));
  return lines;
}

Lines Follow::opened() {
  Lines lines;
  NSArray* urls = host::openedURLs();
  for (NSUInteger i = 0; i < send<NSUInteger>(urls, "count"_sel); ++i)
    lines.push_back(words(send(urls, NSArray::objectAtIndex, i)));
  return lines;
}

Lines Follow::requests() {
  Lines lines;
  NSArray* list = host::performedRequests();
  for (NSUInteger i = 0; i < send<NSUInteger>(list, "count"_sel); ++i) {
    NSObject* request = send(list, NSArray::objectAtIndex, i);
    auto* parameters = send<NSDictionary*>(request, "parameters"_sel);
    lines.push_back(answer(send<NSObject*>(request, "account"_sel), "username"_sel) + ": " +
                    answer(request, "serviceType"_sel) + " " +
                    std::to_string(send<NSInteger>(request, "requestMethod"_sel)) + " " +
                    answer(request, "URL"_sel) + " screen_name=" +
                    words(send(parameters, NSDictionary::objectForKey, "screen_name"_ns)) +
                    " follow=" + words(send(parameters, NSDictionary::objectForKey, "follow"_ns)) +
                    " of " + std::to_string(send(parameters, NSDictionary::count)));
  }
  return lines;
}

std::string Follow::follows(const std::string& account) {
  return account +
         ": com.apple.social.twitter 1 https://api.twitter.com/1.1/friendships/create.json "
         "screen_name=maker follow=FALSE of 2";
}

}  // namespace test
