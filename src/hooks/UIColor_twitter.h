// Text colours of the Twitter client, class methods that it adds to UIColor.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::twitter {

/// The seven are dyed alike and never ask for their own colour, but each has its slot.
template <objc::FixedString Name>
inline constinit objc::Hook<UIColor*(Class)> color;

UIColor* dyedColor(Class self, SEL cmd);

}  // namespace varnix::twitter
