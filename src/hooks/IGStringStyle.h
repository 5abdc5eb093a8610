// Links of the Instagram application.
#pragma once

#include "objc/hook.h"
#include "platform/Instagram.h"

namespace varnix::instagram {

extern objc::Hook<UIColor*(IGStringStyle*)> linkColor;
UIColor* dyedLinkColor(IGStringStyle* self, SEL cmd);

extern objc::Hook<void(IGStringStyle*, UIColor*)> setLinkColor;
void dyedSetLinkColor(IGStringStyle* self, SEL cmd, UIColor* color);

}  // namespace varnix::instagram
