// The situations in which SpringBoard's surfaces are asked.
#pragma once

#include "objc/strong.h"
#include "platform/CoreGraphics.h"

namespace varnix::probe {

/// The settings of a surface's backdrop; nil for an object without one.
NSObject* backdropSettings(NSObject* surface);

/// The wallpaper colour that SpringBoard gives its icons, a medium grey.
CGColorRef wallpaperColor();

// The settings of the surface's backdrop, after it was presented or had its layout done.
Strong<NSObject> presentedControlCenter(Class cls);
Strong<NSObject> presentedNotificationCenter(Class cls);
Strong<NSObject> laidOutHud(Class cls);

/// What is behind an icon, after it was given the wallpaper's colour.
Strong<NSObject> greyBacking(Class cls);
/// The same, given the colour because there is no piece of wallpaper.
Strong<NSObject> greyFallback(Class cls);
Strong<NSObject> badgeImage(Class cls);

}  // namespace varnix::probe
