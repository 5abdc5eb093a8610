// An extension beside ours that replaces methods too: UIView's tint, as ours does; UISlider's,
// which is inherited from it; UIView's layout, of which ours replaces the switch's. Each counts its
// calls and answers what it saved.
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

constinit objc::Hook<UIColor*(UIView*)> viewTint;
constinit objc::Hook<UIColor*(UIView*)> sliderTint;
constinit objc::Hook<void(UIView*)> viewLayout;

[[gnu::constructor]] void start() {
  viewTint.install(objc_getClass("UIView"), "tintColor"_sel, [](UIView* self, SEL command) {
    ++neighbour_viewTints;
    return viewTint.original(self, command);
  });
  sliderTint.install(objc_getClass("UISlider"), "tintColor"_sel, [](UIView* self, SEL command) {
    ++neighbour_sliderTints;
    return sliderTint.original(self, command);
  });
  viewLayout.install(objc_getClass("UIView"), "layoutSubviews"_sel, [](UIView* self, SEL command) {
    ++neighbour_viewLayouts;
    viewLayout.original(self, command);
  });
  if (std::getenv("NEIGHBOUR_PRINTS") == nullptr) return;
  auto* raw = send<UIView*>(objc_getClass("UISwitch"), "alloc"_sel);
  const auto view = objc::Strong<UIView>::adopt(send<UIView*>(raw, "init"_sel));
  send<void>(view, "layoutSubviews"_sel);
  std::printf("layouts of a switch: %d\n", neighbour_viewLayouts);
  std::fflush(stdout);
}

}  // namespace
