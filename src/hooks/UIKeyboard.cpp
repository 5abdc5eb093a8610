#include "hooks/UIKeyboard.h"

#include "hooks/shared_manager.h"

namespace varnix::keyboard {

constinit objc::Hook<UIKeyboard*(UIKeyboard*, CGRect)> initWithFrame;
constinit objc::Hook<bool(UIKBRenderConfig*)> lightKeyboard;

namespace {

bool isDyed() { return send<NSInteger>(sharedManager, "keyboardEnabled"_sel) != kKeepsItsLook; }

}  // namespace

UIKeyboard* dyedInitWithFrame(UIKeyboard* self, SEL cmd, CGRect frame) {
  UIKeyboard* keyboard = initWithFrame.original(self, cmd, frame);
  if (!isDyed()) return keyboard;
  send<void>(keyboard, "setOpaque:"_sel, false);
  send<void>(keyboard, "setBackgroundColor:"_sel, send<UIColor*>(sharedManager, "keyboardDye"_sel));
  return keyboard;
}

bool dyedLightKeyboard(UIKBRenderConfig* self, SEL cmd) {
  return !isDyed() && lightKeyboard.original(self, cmd);
}

}  // namespace varnix::keyboard
