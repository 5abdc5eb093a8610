// Another extension that replaces methods: UIView's tint, which ours replaces too; UISlider's,
// which is inherited from it; UIView's layout, of which ours replaces the switch's. Each
// replacement counts its calls and returns the original's answer.
#include <cstdio>
#include <cstdlib>

#include "objc/hook.h"
#include "objc/strong.h"
#include "platform/UIKit.h"

extern "C" {
[[gnu::visibility("default")]] int neighbour_viewTints = 0;
[[gnu::visibility("default")]] int neighbour_sliderTints = 0;
[[gnu::visibility("default")]] int neighbour_viewLayouts = 0;
}

namespace {

constinit objc::Hook<UIView::tintColor> viewTint;
constinit objc::Hook<UIView::tintColor, UISlider> sliderTint;
constinit objc::Hook<UIView::layoutSubviews> viewLayout;

UIColor* countedViewTint(UIView* self, SEL command) {
  ++neighbour_viewTints;
  return viewTint.original(self, command);
}
UIColor* countedSliderTint(UISlider* self, SEL command) {
  ++neighbour_sliderTints;
  return sliderTint.original(self, command);
}
void countedViewLayout(UIView* self, SEL command) {
  ++neighbour_viewLayouts;
  viewLayout.original(self, command);
}

[[gnu::constructor]] void start() {
  viewTint.install<&countedViewTint>(objc_getClass("UIView"), UIView::tintColor);
  sliderTint.install<&countedSliderTint>(objc_getClass("UISlider"), UIView::tintColor);
  viewLayout.install<&countedViewLayout>(objc_getClass("UIView"), UIView::layoutSubviews);
  if (std::getenv("NEIGHBOUR_PRINTS") == nullptr) return;
  const auto view = objc::make<UISwitch>();
  send(view, UIView::layoutSubviews);
  std::printf("layouts of a switch: %d\n", neighbour_viewLayouts);
  std::fflush(stdout);
}

}  // namespace
