// The situations in which SpringBoard's surfaces are asked.
#pragma once

#include "objc/strong.h"
#include "platform/CoreGraphics.h"

namespace varnix::probe {

/// The settings of a surface's backdrop; nil for an object without one.
NSObject* backdropSettings(NSObject* surface);

/// The colour of wallpaper that SpringBoard hands its icons, a middling grey.
CGColorRef wallpaperColor();

// The settings of the surface's backdrop, after it was presented or laid out.
Strong<NSObject> presentedControlCenter(Class cls);
Strong<NSObject> presentedNotificationCenter(Class cls);
Strong<NSObject> laidOutHud(Class cls);

/// What lies behind an icon, handed the wallpaper's colour.
Strong<NSObject> greyBacking(Class cls);
/// The same, handed it for want of a piece of wallpaper.
Strong<NSObject> greyFallback(Class cls);
Strong<NSObject> badgeImage(Class cls);

}  // namespace varnix::probe
