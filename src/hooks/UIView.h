// The tint of views. Getter and setter differ: in applications the getter dyes even
// segments, which the setter spares; in SpringBoard the getter spares segments and the setter
// changes nothing.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::view {

extern objc::Hook<UIView::tintColor> tintColor;
UIColor* dyedTintColor(UIView* self, SEL cmd);

extern objc::Hook<UIView::setTintColor> setTintColor;
void dyedSetTintColor(UIView* self, SEL cmd, UIColor* color);

}  // namespace varnix::view
