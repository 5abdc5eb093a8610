#include "hooks/SBControlCenterContentContainerView.h"

#include "hooks/backdrop.h"
#include "hooks/track_observer.h"
#include "objc/ivar.h"

namespace varnix::control_center {

constinit objc::Hook<void(View*, NSObject*)> contrastDidChange;
constinit objc::Hook<void(View*)> willPresent;
constinit objc::Hook<void(View*)> updateBackground;
constinit objc::Hook<View*(View*, CGRect)> initWithFrame;
constinit objc::Hook<void(View*)> dealloc;

namespace {

constexpr BackdropElement kElement = backdropElement<"ccEnabled", "ccDye">(CGFloat(0.6));

void tintAgain(View* self) { send<void>(self, "colorBackdrop"_sel); }

}  // namespace

void colorBackdrop(View* self, SEL) {
  tintOrClearBackdrop(send<UIView*>(self, "backdropView"_sel), kElement);
}

// Where contrast is enhanced there is no blur to tint: the colour goes behind the content as it is.
void dyedContrastDidChange(View* self, SEL cmd, NSObject* notification) {
  contrastDidChange.original(self, cmd, notification);
  if (kElement.type() == kKeepsItsLook) return;
  const bool isEnhanced = _UIAccessibilityEnhanceBackgroundContrast();
  auto* background = objc::instanceVariable<UIView>(self, "_accessibilityBackgroundView");
  send<void>(background, "setBackgroundColor:"_sel, isEnhanced ? kElement.color() : nullptr);
  if (!isEnhanced) tintAgain(self);
}

void dyedWillPresent(View* self, SEL cmd) {
  willPresent.original(self, cmd);
  tintAgain(self);
}

void dyedUpdateBackground(View* self, SEL cmd) {
  updateBackground.original(self, cmd);
  tintAgain(self);
}

View* dyedInitWithFrame(View* self, SEL cmd, CGRect frame) {
  View* view = initWithFrame.original(self, cmd, frame);
  observeTrack(view);
  return view;
}

void dyedDealloc(View* self, SEL cmd) {
  stopObservingTrack(self);
  dealloc.original(self, cmd);
}

}  // namespace varnix::control_center
