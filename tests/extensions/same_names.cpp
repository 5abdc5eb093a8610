// An extension that has classes of our names, as a copy of our sources in another one has.
#include "objc/define.h"
#include "platform/Foundation.h"

namespace {

struct OtherManager : NSObject {
  int number() { return 7; }
};
struct OtherPrefsManager : NSObject {
  int number() { return 8; }
};

}  // namespace

OBJC_CLASS_NAMED(VNXManager, NSObject, OtherManager, NSObject,
                 objc::Method<"number", &OtherManager::number>)
OBJC_CLASS_NAMED(KTPrefsManager, NSObject, OtherPrefsManager, NSObject,
                 objc::Method<"number", &OtherPrefsManager::number>)

extern "C" {
/// Its own classes, however they are found by name.
[[gnu::visibility("default")]] Class same_manager = nullptr;
[[gnu::visibility("default")]] Class same_prefsManager = nullptr;
}

namespace {

[[gnu::constructor]] void start() {
  same_manager = &objc_class_VNXManager;
  same_prefsManager = &objc_class_KTPrefsManager;
}

}  // namespace
