// The default notification centre: notifications inside one process.
#include <algorithm>
#include <mutex>
#include <vector>

#include "Foundation/text.h"
#include "objc/define.h"

namespace {

struct Notification : NSObject {
  Strong<NSString> name;
  Strong<NSObject> object;
  Strong<NSDictionary> userInfo;
};

/// An observer is not kept alive: it must remove itself before it is freed.
struct Observation {
  NSObject* observer;
  SEL selector;
  Strong<NSString> name;  ///< nil observes every name
  NSObject* object;       ///< nil observes every sender

  bool wants(NSString* posted, NSObject* sender) const {
    return (name.get() == nullptr || host::text(name) == host::text(posted)) &&
           (object == nullptr || object == sender);
  }
};

struct Center : NSObject {
  static Center* shared();
  void add(NSObject* observer, SEL selector, NSString* name, NSObject* object) {
    std::scoped_lock guard(mutex);
    observations.push_back({observer, selector, Strong<NSString>::retain(name), object});
  }
  void remove(NSObject* observer, NSString* name, NSObject* object) {
    std::scoped_lock guard(mutex);
    std::erase_if(observations, [=](const Observation& o) {
      return o.observer == observer &&
             (name == nullptr || host::text(o.name) == host::text(name)) &&
             (object == nullptr || o.object == object);
    });
  }
  void removeAll(NSObject* observer) { remove(observer, nullptr, nullptr); }
  void post(NSString* name, NSObject* object) { postWithInfo(name, object, nullptr); }
  void postWithInfo(NSString* name, NSObject* object, NSDictionary* userInfo);

  bool isObserved(const Observation& wanted) {
    std::scoped_lock guard(mutex);
    return std::any_of(observations.begin(), observations.end(), [&](const Observation& o) {
      return o.observer == wanted.observer && o.selector == wanted.selector;
    });
  }

  std::mutex mutex;
  std::vector<Observation> observations;
};

}  // namespace

OBJC_CLASS_NAMED(NSNotification, NSObject, Notification, NSObject,
                 objc::Readable<"name", &Notification::name, "name">,
                 objc::Readable<"object", &Notification::object, "object">,
                 objc::Readable<"userInfo", &Notification::userInfo, "userInfo">)

OBJC_CLASS_NAMED(NSNotificationCenter, NSObject, Center, NSObject,
                 objc::Ivar<"mutex", &Center::mutex>,
                 objc::Ivar<"observations", &Center::observations>,
                 objc::ClassMethod<"defaultCenter", &Center::shared>,
                 objc::Method<"addObserver:selector:name:object:", &Center::add>,
                 objc::Method<"removeObserver:name:object:", &Center::remove>,
                 objc::Method<"removeObserver:", &Center::removeAll>,
                 objc::Method<"postNotificationName:object:", &Center::post>,
                 objc::Method<"postNotificationName:object:userInfo:", &Center::postWithInfo>)

Center* Center::shared() {
  static auto* center =
      static_cast<Center*>(class_createInstance(&objc_class_NSNotificationCenter, 0));
  return center;
}

void Center::postWithInfo(NSString* name, NSObject* object, NSDictionary* userInfo) {
  std::vector<Observation> wanted;
  {
    std::scoped_lock guard(mutex);
    std::copy_if(observations.begin(), observations.end(), std::back_inserter(wanted),
                 [=](const Observation& o) { return o.wants(name, object); });
  }
  auto* notification =
      static_cast<Notification*>(class_createInstance(&objc_class_NSNotification, 0));
  notification->name = Strong<NSString>::retain(name);
  notification->object = Strong<NSObject>::retain(object);
  notification->userInfo = Strong<NSDictionary>::retain(userInfo);
  for (const Observation& observation : wanted) {
    // An earlier observer may have removed this one, and freed it.
    if (!isObserved(observation)) continue;
    objc::sendDynamic<void>(observation.observer, observation.selector,
                            static_cast<NSObject*>(notification));
  }
  objc_release(notification);
}
