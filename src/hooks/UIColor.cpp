#include "hooks/UIColor.h"

#include "objc/association.h"
#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix {

namespace {

/// A mark is a boolean object under the getter's selector. It is not retained: the platform's two
/// booleans live as long as the process.
template <objc::FixedString Getter>
bool mark(UIColor* self, SEL) {
  return send<bool>(objc::associated<NSNumber>(self, objc::Selector<Getter>::get()),
                    "boolValue"_sel);
}

template <objc::FixedString Getter>
void setMark(UIColor* self, SEL, bool value) {
  objc::associate(self, objc::Selector<Getter>::get(), NSNumber::numberWithBool(value),
                  AssociationPolicy::assign);
}

}  // namespace

void addColorMarks(Class colorClass) {
  objc::addMethod(colorClass, "isVarnixColor"_sel, &mark<"isVarnixColor">, "B@:");
  objc::addMethod(colorClass, "setIsVarnixColor:"_sel, &setMark<"isVarnixColor">, "v@:B");
  objc::addMethod(colorClass, "isVarnixAlbumColor"_sel, &mark<"isVarnixAlbumColor">, "B@:");
  objc::addMethod(colorClass, "setIsVarnixAlbumColor:"_sel, &setMark<"isVarnixAlbumColor">, "v@:B");
}

}  // namespace varnix
