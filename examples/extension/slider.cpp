// The smallest extension: the unused part of every slider carries the tint colour, paler.
#include "objc/hook.h"
#include "platform/UIKit.h"

namespace {

constexpr CGFloat kPale = 0.25;

/// Keeps the method that is replaced.
constinit objc::Hook<UISlider::setMaximumTrackTintColor> setTrackColor;

void dyedSetTrackColor(UISlider* self, SEL command, UIColor*) {
  UIColor* tint = send(self, UIView::tintColor);
  setTrackColor.original(self, command, send(tint, UIColor::colorWithAlphaComponent, kPale));
}

/// Runs when the extension is loaded.
[[gnu::constructor]] void install() {
  // Processes without an interface have no such class.
  if (Class slider = objc_getClass("UISlider"))
    setTrackColor.install<&dyedSetTrackColor>(slider, UISlider::setMaximumTrackTintColor);
}

}  // namespace
