#include "UIKit/UIApplication_urls.h"

#include <algorithm>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "Foundation/text.h"
#include "objc/define.h"

namespace {

struct Urls {
  std::mutex mutex;
  std::set<std::string, std::less<>> installed;
  std::vector<Strong<NSURL>> opened;
};

Urls& urls() {
  static auto* all = new Urls;
  return *all;
}

std::string lowered(NSString* text) {
  std::string result(host::text(text));
  std::ranges::transform(result, result.begin(), [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  });
  return result;
}

bool takesByItself(std::string_view scheme) {
  return scheme == "http" || scheme == "https" || scheme == "mailto";
}

struct Opener : UIApplication {
  bool canOpen(NSURL* url) {
    const std::string scheme = lowered(send<NSString*>(url, "scheme"_sel));
    const std::lock_guard lock(urls().mutex);
    return takesByItself(scheme) || urls().installed.contains(scheme);
  }
  bool open(NSURL* url) {
    if (!send(this, UIApplication::canOpenURL, url)) return false;
    const std::lock_guard lock(urls().mutex);
    urls().opened.push_back(Strong<NSURL>::retain(url));
    return true;
  }

  static void setInstalled(NSArray* schemes) {
    std::set<std::string, std::less<>> installed;
    for (NSUInteger i = 0; i < send<NSUInteger>(schemes, "count"_sel); ++i)
      installed.insert(lowered(static_cast<NSString*>(send(schemes, NSArray::objectAtIndex, i))));
    const std::lock_guard lock(urls().mutex);
    urls().installed = std::move(installed);
  }
  static NSArray* opened() {
    NSMutableArray* list = NSMutableArray::array();
    const std::lock_guard lock(urls().mutex);
    for (const auto& url : urls().opened) send(list, NSMutableArray::addObject, url);
    return list;
  }
};

}  // namespace

OBJC_CATEGORY_OF_OWN(UIApplication, URLs, objc::Method<"canOpenURL:", &Opener::canOpen>,
                     objc::Method<"openURL:", &Opener::open>,
                     objc::ClassMethod<"standIn_setInstalledURLSchemes:", &Opener::setInstalled>,
                     objc::ClassMethod<"standIn_openedURLs", &Opener::opened>)
