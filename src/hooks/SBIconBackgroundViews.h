// The backgrounds of folder icons and of icons with a blurred backing.
#pragma once

#include "objc/hook.h"
#include "platform/SpringBoard.h"

namespace varnix::icon_background {

using Blurry = SBIconBlurryBackgroundView;

/// Both classes have the method and take the same replacement, each in a slot of its own.
template <class View>
inline constinit objc::Hook<Blurry::setWallpaperColor, View> setWallpaperColor;

/// The folder's colour if folders are dyed, else the given one.
CGColorRef folderColorOr(CGColorRef color);

template <class View>
void dyedSetWallpaperColor(View* self, SEL cmd, CGColorRef color, CGSize phase) {
  setWallpaperColor<View>.original(self, cmd, folderColorOr(color), phase);
}

extern objc::Hook<Blurry::setWallpaperBackgroundRect> setWallpaperBackgroundRect;
void dyedSetWallpaperBackgroundRect(Blurry* self, SEL cmd, CGRect rect, NSObject* contents,
                                    CGColorRef fallback);

}  // namespace varnix::icon_background
