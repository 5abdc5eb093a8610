// The keyboard: a see-through view over the keyboard's colour, rendered as one that is not light.
#pragma once

#include "objc/hook.h"
#include "platform/UIKit.h"

namespace varnix::keyboard {

extern objc::Hook<UIKeyboard*(UIKeyboard*, CGRect)> initWithFrame;
UIKeyboard* dyedInitWithFrame(UIKeyboard* self, SEL cmd, CGRect frame);

extern objc::Hook<bool(UIKBRenderConfig*)> lightKeyboard;
bool dyedLightKeyboard(UIKBRenderConfig* self, SEL cmd);

}  // namespace varnix::keyboard
