// Links of the Instagram application.
#pragma once

#include "objc/hook.h"
#include "platform/Instagram.h"

namespace varnix::instagram {

extern objc::Hook<IGStringStyle::linkColor> linkColor;
UIColor* dyedLinkColor(IGStringStyle* self, SEL cmd);

extern objc::Hook<IGStringStyle::setLinkColor> setLinkColor;
void dyedSetLinkColor(IGStringStyle* self, SEL cmd, UIColor* color);

}  // namespace varnix::instagram
