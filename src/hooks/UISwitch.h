// Switches always carry the dye, and no tint of their own.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::switches {

extern objc::Hook<void(UISwitch*)> layoutSubviews;
void dyedLayoutSubviews(UISwitch* self, SEL cmd);

extern objc::Hook<void(UISwitch*, UIColor*)> setOnTintColor;
void dyedSetOnTintColor(UISwitch* self, SEL cmd, UIColor* color);

extern objc::Hook<void(UISwitch*, UIColor*)> setTintColor;
void dyedSetTintColor(UISwitch* self, SEL cmd, UIColor* color);

}  // namespace varnix::switches
