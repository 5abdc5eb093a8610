// Switches always have the dye, and no tint of their own.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::switches {

extern objc::Hook<UIView::layoutSubviews, UISwitch> layoutSubviews;
void dyedLayoutSubviews(UISwitch* self, SEL cmd);

extern objc::Hook<UISwitch::setOnTintColor> setOnTintColor;
void dyedSetOnTintColor(UISwitch* self, SEL cmd, UIColor* color);

extern objc::Hook<UIView::setTintColor, UISwitch> setTintColor;
void dyedSetTintColor(UISwitch* self, SEL cmd, UIColor* color);

}  // namespace varnix::switches
