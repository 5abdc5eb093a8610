// What VoiceOver says of an object: what was set.
#include "objc/association.h"
#include "objc/define.h"
#include "platform/UIKitLists.h"
#include "runtime/send.h"

namespace {

struct Spoken : NSObject {
  static constexpr auto kCopied = AssociationPolicy::copyNonatomic;

  NSString* label() { return objc::associated<NSString>(this, "accessibilityLabel"_sel); }
  void setLabel(NSString* text) { objc::associate(this, "accessibilityLabel"_sel, text, kCopied); }
  NSString* value() { return objc::associated<NSString>(this, "accessibilityValue"_sel); }
  void setValue(NSString* text) { objc::associate(this, "accessibilityValue"_sel, text, kCopied); }
};

}  // namespace

OBJC_CATEGORY(NSObject, UIAccessibility, objc::Method<"accessibilityLabel", &Spoken::label>,
              objc::Method<"setAccessibilityLabel:", &Spoken::setLabel>,
              objc::Method<"accessibilityValue", &Spoken::value>,
              objc::Method<"setAccessibilityValue:", &Spoken::setValue>)
