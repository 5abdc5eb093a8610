// Text colours of the Twitter client: class methods that it adds to UIColor.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::twitter {

template <objc::FixedString Name>
inline constexpr objc::ClassMessage<UIColor, Name, UIColor*()> textColor{};

/// All seven are dyed the same way and never ask for their original colour, but each has its slot.
template <objc::FixedString Name>
inline constinit objc::Hook<textColor<Name>> color;

UIColor* dyedColor(Class self, SEL cmd);

}  // namespace varnix::twitter
