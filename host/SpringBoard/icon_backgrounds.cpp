// What is behind folder icons, and behind icons that show a blurred piece of wallpaper.
#include "CoreGraphics/objects.h"
#include "UIKit/UIView.h"
#include "platform/SpringBoard.h"

namespace {

struct BlurryBackground : host::View {
  void setWallpaperColor(CGColorRef value, CGSize offset) {
    color = Strong<CGColor>::retain(value);
    phase = {offset.width, offset.height};
  }
  CGColorRef wallpaperColor() { return color; }
  CGPoint wallpaperPhase() { return phase; }
  void setWallpaperBackground(CGRect value, NSObject* snippet, CGColorRef plain) {
    rect = value;
    contents = Strong<NSObject>::retain(snippet);
    fallback = Strong<CGColor>::retain(plain);
  }
  CGRect backgroundRect() { return rect; }
  NSObject* backgroundContents() { return contents; }
  CGColorRef fallbackColor() { return fallback; }

  Strong<CGColor> color;
  CGPoint phase;
  CGRect rect;
  Strong<NSObject> contents;
  Strong<CGColor> fallback;
};

struct FolderBackground : BlurryBackground {};

}  // namespace

OBJC_CLASS_NAMED(SBIconBlurryBackgroundView, UIView, BlurryBackground, host::View,
                 objc::Ivar<"_wallpaperColor", &BlurryBackground::color>,
                 objc::Ivar<"_wallpaperPhase", &BlurryBackground::phase>,
                 objc::Method<"setWallpaperColor:phase:", &BlurryBackground::setWallpaperColor>,
                 objc::Method<"wallpaperColor", &BlurryBackground::wallpaperColor>,
                 objc::Method<"wallpaperPhase", &BlurryBackground::wallpaperPhase>,
                 objc::Ivar<"_backgroundRect", &BlurryBackground::rect>,
                 objc::Ivar<"_backgroundContents", &BlurryBackground::contents>,
                 objc::Ivar<"_fallbackColor", &BlurryBackground::fallback>,
                 objc::Method<"setWallpaperBackgroundRect:forContents:withFallbackColor:",
                              &BlurryBackground::setWallpaperBackground>,
                 objc::Method<"wallpaperBackgroundRect", &BlurryBackground::backgroundRect>,
                 objc::Method<"wallpaperContents", &BlurryBackground::backgroundContents>,
                 objc::Method<"fallbackColor", &BlurryBackground::fallbackColor>)

OBJC_CLASS_NAMED(SBFolderIconBackgroundView, SBIconBlurryBackgroundView, FolderBackground,
                 BlurryBackground)
