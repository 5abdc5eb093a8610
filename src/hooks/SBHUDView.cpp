#include "hooks/SBHUDView.h"

#include "hooks/backdrop.h"
#include "objc/ivar.h"

namespace varnix::hud {

constinit objc::Hook<void(SBHUDView*)> layoutSubviews;

namespace {

/// Stronger than the two centres'.
constexpr BackdropElement kElement = backdropElement<"volEnabled", "volDye">(CGFloat(0.8));

}  // namespace

// Where the HUD is off, whatever tint it has stays.
void dyedLayoutSubviews(SBHUDView* self, SEL cmd) {
  layoutSubviews.original(self, cmd);
  if (kElement.type() == kKeepsItsLook) return;
  tintBackdrop(objc::instanceVariable<UIView>(self, "_backdropView"), kElement);
}

}  // namespace varnix::hud
