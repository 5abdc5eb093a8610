#include "hooks/SBControlCenterContentContainerView.h"

#include "hooks/backdrop.h"
#include "hooks/track_observer.h"

namespace varnix::control_center {

constinit objc::Hook<View::contrastDidChange> contrastDidChange;
constinit objc::Hook<View::willPresent> willPresent;
constinit objc::Hook<View::updateBackground> updateBackground;
constinit objc::Hook<UIView::initWithFrame, View> initWithFrame;
constinit objc::Hook<NSObject::dealloc, View> dealloc;

namespace {

constexpr BackdropElement kElement = backdropElement<"cc">(CGFloat(0.6));

}  // namespace

void tint(View* self, SEL) { tintOrClearBackdrop(send(self, View::backdropView), kElement); }

// With enhanced contrast there is no blur to tint: the plain colour goes behind the content.
void dyedContrastDidChange(View* self, SEL cmd, NSObject* notification) {
  contrastDidChange.original(self, cmd, notification);
  if (kElement.type() == kKeepsItsLook) return;
  const bool isEnhanced = _UIAccessibilityEnhanceBackgroundContrast() != 0;
  UIView* background = objc::read(self, View::accessibilityBackgroundView);
  send(background, UIView::setBackgroundColor, isEnhanced ? kElement.color() : nullptr);
  if (!isEnhanced) send(self, colorBackdrop);
}

void dyedWillPresent(View* self, SEL cmd) {
  willPresent.original(self, cmd);
  send(self, colorBackdrop);
}

void dyedUpdateBackground(View* self, SEL cmd) {
  updateBackground.original(self, cmd);
  send(self, colorBackdrop);
}

UIView* dyedInitWithFrame(View* self, SEL cmd, CGRect frame) {
  UIView* view = initWithFrame.original(self, cmd, frame);
  observeTrack(view);
  return view;
}

void dyedDealloc(View* self, SEL cmd) {
  stopObservingTrack(self);
  dealloc.original(self, cmd);
}

}  // namespace varnix::control_center
