// The volume HUD's backdrop, tinted at every layout.
#pragma once

#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::hud {

extern objc::Hook<UIView::layoutSubviews, SBHUDView> layoutSubviews;
void dyedLayoutSubviews(SBHUDView* self, SEL cmd);

}  // namespace varnix::hud
