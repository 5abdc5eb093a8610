// Badges: a coloured copy of the platform's background, made again at every checkout.
#pragma once

#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::badge {

extern objc::Hook<SBIconBadgeView::checkoutBackgroundImage> checkoutBackgroundImage;
SBIconAccessoryImage* dyedCheckoutBackgroundImage(Class self, SEL cmd);

}  // namespace varnix::badge
