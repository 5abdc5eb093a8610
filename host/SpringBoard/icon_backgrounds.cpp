// What lies behind folder icons, and behind icons that show a blurred piece of wallpaper.
#include "CoreGraphics/objects.h"
#include "UIKit/UIView.h"
#include "platform/SpringBoard.h"

namespace {

/// Both classes have a colour and a phase; neither is the other's superclass.
struct IconBackground : host::View {
  void setWallpaperColor(CGColorRef value, CGPoint offset) {
    color = Strong<CGColor>::retain(value);
    phase = offset;
  }
  CGColorRef wallpaperColor() { return color; }
  CGPoint wallpaperPhase() { return phase; }

  Strong<CGColor> color;
  CGPoint phase;
};

struct BlurryBackground : IconBackground {
  void setWallpaperBackground(CGRect value, NSObject* snippet, CGColorRef plain) {
    rect = value;
    contents = Strong<NSObject>::retain(snippet);
    fallback = Strong<CGColor>::retain(plain);
  }
  CGRect backgroundRect() { return rect; }
  NSObject* backgroundContents() { return contents; }
  CGColorRef fallbackColor() { return fallback; }

  CGRect rect;
  Strong<NSObject> contents;
  Strong<CGColor> fallback;
};

}  // namespace

#define WALLPAPER_MEMBERS(T)                                                          \
  objc::Ivar<"_wallpaperColor", &T::color>, objc::Ivar<"_wallpaperPhase", &T::phase>, \
      objc::Method<"setWallpaperColor:phase:", &T::setWallpaperColor>,                \
      objc::Method<"wallpaperColor", &T::wallpaperColor>,                             \
      objc::Method<"wallpaperPhase", &T::wallpaperPhase>

OBJC_CLASS_NAMED(SBFolderIconBackgroundView, UIView, IconBackground, host::View,
                 WALLPAPER_MEMBERS(IconBackground))

OBJC_CLASS_NAMED(SBIconBlurryBackgroundView, UIView, BlurryBackground, host::View,
                 WALLPAPER_MEMBERS(BlurryBackground),
                 objc::Ivar<"_backgroundRect", &BlurryBackground::rect>,
                 objc::Ivar<"_backgroundContents", &BlurryBackground::contents>,
                 objc::Ivar<"_fallbackColor", &BlurryBackground::fallback>,
                 objc::Method<"setWallpaperBackgroundRect:forContents:withFallbackColor:",
                              &BlurryBackground::setWallpaperBackground>,
                 objc::Method<"wallpaperBackgroundRect", &BlurryBackground::backgroundRect>,
                 objc::Method<"wallpaperContents", &BlurryBackground::backgroundContents>,
                 objc::Method<"fallbackColor", &BlurryBackground::fallbackColor>)
