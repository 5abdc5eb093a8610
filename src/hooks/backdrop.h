// The tint of a platform backdrop: Control Centre, Notification Centre and the volume HUD share it.
#pragma once

#include "hooks/shared_manager.h"
#include "objc/hook.h"

namespace varnix {

/// A surface with a backdrop: the manager's two operations for it, asked anew at each use.
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

/// Lays the colour over the blur: the playing album's where album art is live, the element's own,
/// the icon's of the application in front, the album's of a track that plays without album art
/// being live, or the element's, in that order. Each setting goes to a settings object that is
/// fetched anew. Nothing happens to what is no such backdrop.
void tintBackdrop(UIView* backdrop, const BackdropElement& element);

/// The same, and no tint where the element is off; its strengths stay as they are then.
void tintOrClearBackdrop(UIView* backdrop, const BackdropElement& element);

/// What tinting sends to backdrops and their settings.
inline constexpr auto kBackdropNeeds =
    objc::needs(objc::kNeedsMethod<_UIBackdropView::inputSettings>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setRequiresColorStatistics>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setUsesColorTintView>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setColorTint>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setColorTintAlpha>,
                objc::kNeedsMethod<_UIBackdropViewSettings::setColorTintMaskAlpha>);

}  // namespace varnix
