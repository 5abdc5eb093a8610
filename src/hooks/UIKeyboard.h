// The keyboard: a see-through view over the keyboard's colour, rendered as one that is not light.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::keyboard {

extern objc::Hook<UIView::initWithFrame, UIKeyboard> initWithFrame;
UIView* dyedInitWithFrame(UIKeyboard* self, SEL cmd, CGRect frame);

extern objc::Hook<UIKBRenderConfig::lightKeyboard> lightKeyboard;
bool dyedLightKeyboard(UIKBRenderConfig* self, SEL cmd);

}  // namespace varnix::keyboard
