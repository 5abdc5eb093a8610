// The installed applications: their names and their icons.
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "AppList/applications.h"
#include "Foundation/file_contents.h"
#include "Foundation/run_loop.h"
#include "Foundation/text.h"
#include "objc/define.h"
#include "platform/AppList.h"
#include "runtime/runtime.h"

extern "C" {
NSString* const ALIconLoadedNotification = "ALIconLoadedNotification"_ns;
NSString* const ALDisplayIdentifierKey = "ALDisplayIdentifier"_ns;
}

namespace {

constexpr std::size_t kMaximumFile = 64 << 20;
// No surface shows a larger icon, and its pixels take 16 MiB.
constexpr NSUInteger kMaximumSize = 1024;

/// A bitmap of its own, in pixels of the screen.
UIImage* drawn(UIImage* icon, CGFloat size) {
  UIGraphicsBeginImageContextWithOptions({size, size}, false, 0);
  send(icon, UIImage::drawInRect, {{0, 0}, {size, size}});
  UIImage* image = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return image;
}

/// The icons that have come from the process that has them. Any thread may ask.
class Arrived {
 public:
  /// Whether it is the first time.
  bool add(NSUInteger size, const std::string& identifier, UIImage* icon) {
    const std::scoped_lock guard(mutex_);
    // Larger ones take too much memory to be kept.
    Strong<UIImage> kept;
    if (size <= ALApplicationIconSizeLarge) kept = Strong<UIImage>::retain(icon);
    return icons_.try_emplace({size, identifier}, std::move(kept)).second;
  }
  bool has(NSUInteger size, const std::string& identifier) {
    const std::scoped_lock guard(mutex_);
    return icons_.contains({size, identifier});
  }
  /// Nil if none was kept.
  UIImage* icon(NSUInteger size, const std::string& identifier) {
    const std::scoped_lock guard(mutex_);
    const auto found = icons_.find({size, identifier});
    return found == icons_.end() ? nullptr : found->second.get();
  }

 private:
  std::mutex mutex_;
  std::map<std::pair<NSUInteger, std::string>, Strong<UIImage>> icons_;
};

Arrived& arrived() {
  static auto* icons = new Arrived;
  return *icons;
}

void tellOfIcon(const std::string& identifier) {
  host::MainRunLoop::instance().perform([identifier] {
    NSDictionary* info = NSDictionary::dictionaryWithObjectForKey(host::makeString(identifier),
                                                                  ALDisplayIdentifierKey);
    send<void>(NSNotificationCenter::defaultCenter(), "postNotificationName:object:userInfo:"_sel,
               ALIconLoadedNotification,
               static_cast<NSObject*>(ALApplicationList::sharedApplicationList()), info);
  });
}

struct ApplicationList : ALApplicationList {
  static ApplicationList* shared();
  UIImage* icon(NSUInteger size, NSString* identifier);
  bool hasIcon(NSUInteger size, NSString* identifier) {
    return arrived().has(size, std::string(host::text(identifier)));
  }
  NSDictionary* all() { return filtered(nullptr, false, nullptr); }
  NSDictionary* filtered(NSObject* predicate, bool onlyVisible, NSArray** sorted);
};

/// The size in points. Nil for an unknown application, for an icon that is no picture, and for a
/// size of 0 or beyond reason. The first time, the notification says later that it has come.
UIImage* ApplicationList::icon(NSUInteger size, NSString* identifier) {
  if (size > kMaximumSize || objc::as<NSString>(identifier) == nullptr) return nullptr;
  const std::string name(host::text(identifier));
  if (UIImage* kept = arrived().icon(size, name)) return kept;
  NSData* data = host::fileData(host::applicationIcon(name), kMaximumFile);
  if (data == nullptr) return nullptr;
  auto* image = objc::alloc<UIImage>();
  if (image == nullptr) return nullptr;  // a process without that class
  const auto whole = Strong<UIImage>::adopt(send(image, UIImage::initWithData, data));
  UIImage* made = whole == nullptr ? nullptr : drawn(whole, static_cast<CGFloat>(size));
  if (made != nullptr && arrived().add(size, name, made)) tellOfIcon(name);
  return made;
}

/// Raises for a predicate: there are none here.
NSDictionary* ApplicationList::filtered(NSObject* predicate, bool onlyVisible, NSArray** sorted) {
  if (predicate != nullptr)
    throw host::runtime::Exception("NSInvalidArgumentException", "no predicates on this phone");
  auto* names = NSMutableDictionary::dictionary();
  std::multimap<std::string, NSString*> byTitle;
  for (const auto& [identifier, application] : host::installedApplications()) {
    NSString* key = host::makeString(identifier);
    NSString* name = host::makeString(application.name);
    if (key == nullptr || name == nullptr || (onlyVisible && application.isHidden)) continue;
    send(names, NSMutableDictionary::setObjectForKey, name, key);
    byTitle.emplace(application.name, key);
  }
  if (sorted != nullptr) {
    auto* list = NSMutableArray::array();
    for (const auto& [title, key] : byTitle) send(list, NSMutableArray::addObject, key);
    *sorted = list;
  }
  return names;
}

}  // namespace

OBJC_CLASS_NAMED(
    ALApplicationList, NSObject, ApplicationList, NSObject,
    objc::ClassMethod<"sharedApplicationList", &ApplicationList::shared>,
    objc::Method<"iconOfSize:forDisplayIdentifier:", &ApplicationList::icon>,
    objc::Method<"hasCachedIconOfSize:forDisplayIdentifier:", &ApplicationList::hasIcon>,
    objc::Method<"applications", &ApplicationList::all>,
    objc::Method<"applicationsFilteredUsingPredicate:onlyVisible:titleSortedIdentifiers:",
                 &ApplicationList::filtered>)

ApplicationList* ApplicationList::shared() {
  static auto* list =
      static_cast<ApplicationList*>(class_createInstance(&objc_class_ALApplicationList, 0));
  return list;
}
