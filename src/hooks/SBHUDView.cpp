#include "hooks/SBHUDView.h"

#include "hooks/backdrop.h"

namespace varnix::hud {

constinit objc::Hook<UIView::layoutSubviews, SBHUDView> layoutSubviews;

namespace {

/// Stronger than in the two centres.
constexpr BackdropElement kElement = backdropElement<"vol">(CGFloat(0.8));

}  // namespace

// If the HUD is off, it keeps the tint that it has.
void dyedLayoutSubviews(SBHUDView* self, SEL cmd) {
  layoutSubviews.original(self, cmd);
  if (kElement.type() == kKeepsItsLook) return;
  tintBackdrop(objc::read(self, SBHUDView::backdropView), kElement);
}

}  // namespace varnix::hud
