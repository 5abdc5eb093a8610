// The tint of a platform backdrop: Control Centre, Notification Centre and the volume HUD share it.
#pragma once

#include "hooks/shared_manager.h"
#include "objc/hook.h"

namespace varnix {

/// A surface with a backdrop: the manager's two operations for it, asked again at each use.
struct BackdropElement {
  NSInteger (*type)();
  UIColor* (*color)();
  CGFloat tintAlpha;
};

template <objc::FixedString Operation>
constexpr BackdropElement backdropElement(CGFloat tintAlpha) {
  return {[] { return send(sharedManager, VNXManager::enabled<Operation>); },
          [] { return send(sharedManager, VNXManager::dyeOf<Operation>); }, tintAlpha};
}

/// Lays the colour over the blur. It is the first that applies: the playing album's if album art is
/// live, the element's own, that of the icon of the application in front, the album's of a track
/// that plays although album art is not live, or the element's. The settings object is fetched
/// again for each setting. Nothing happens to any other kind of view.
void tintBackdrop(UIView* backdrop, const BackdropElement& element);

/// The same, but removes the tint if the element is off; its strengths then stay as they are.
void tintOrClearBackdrop(UIView* backdrop, const BackdropElement& element);

/// The messages that tinting sends to backdrops and their settings.
inline constexpr auto kBackdropNeeds =
    objc::needs(objc::kNeedsMethod<_UIBackdropView::inputSettings>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setRequiresColorStatistics>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setUsesColorTintView>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setColorTint>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setColorTintAlpha>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setColorTintMaskAlpha>);

}  // namespace varnix
