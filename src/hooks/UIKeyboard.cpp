#include "hooks/UIKeyboard.h"

#include "hooks/shared_manager.h"

namespace varnix::keyboard {

constinit objc::Hook<UIView::initWithFrame, UIKeyboard> initWithFrame;
constinit objc::Hook<UIKBRenderConfig::lightKeyboard> lightKeyboard;

namespace {

bool isDyed() { return send(sharedManager, VNXManager::enabled<"keyboard">) != kKeepsItsLook; }

}  // namespace

UIView* dyedInitWithFrame(UIKeyboard* self, SEL cmd, CGRect frame) {
  UIView* keyboard = initWithFrame.original(self, cmd, frame);
  if (!isDyed()) return keyboard;
  send(keyboard, UIView::setOpaque, false);
  send(keyboard, UIView::setBackgroundColor, send(sharedManager, VNXManager::dyeOf<"keyboard">));
  return keyboard;
}

bool dyedLightKeyboard(UIKBRenderConfig* self, SEL cmd) {
  return !isDyed() && lightKeyboard.original(self, cmd);
}

}  // namespace varnix::keyboard
