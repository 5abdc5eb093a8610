// Balloons of Messages: a gradient of two shades.
#pragma once

#include "objc/hook.h"
#include "platform/ChatKit.h"

namespace varnix::balloons {

extern objc::Hook<CKGradientView::colors> colors;
NSArray* dyedColors(CKGradientView* self, SEL cmd);

}  // namespace varnix::balloons
