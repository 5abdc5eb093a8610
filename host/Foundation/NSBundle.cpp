// The main bundle: the identity of this process.
#include "Foundation/text.h"
#include "objc/define.h"
#include "process/process.h"

namespace {

struct Bundle : NSBundle {
  static Bundle* main();
  NSString* identifier() { return identifier_; }

  Strong<NSString> identifier_;
};

}  // namespace

OBJC_CLASS_NAMED(NSBundle, NSObject, Bundle, NSObject,
                 objc::Ivar<"identifier", &Bundle::identifier_>,
                 objc::ClassMethod<"mainBundle", &Bundle::main>,
                 objc::Method<"bundleIdentifier", &Bundle::identifier>)

Bundle* Bundle::main() {
  static Bundle* bundle = [] {
    auto* made = static_cast<Bundle*>(class_createInstance(&objc_class_NSBundle, 0));
    if (const auto& name = host::processOptions().bundle)
      made->identifier_ = host::makeOwnedString(*name);
    return made;
  }();
  return bundle;
}
