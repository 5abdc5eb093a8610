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
  void setWallpaperBackground(CGRect value, NSObject* snippet, CGColorRef plain) {
    rect = value;
    contents = Strong<NSObject>::retain(snippet);
    fallback = Strong<CGColor>::retain(plain);
  }

  Strong<CGColor> color;
  CGPoint phase;
  CGRect rect;
  Strong<NSObject> contents;
  Strong<CGColor> fallback;
};

struct FolderBackground : BlurryBackground {};

}  // namespace

OBJC_CLASS_NAMED(
    SBIconBlurryBackgroundView, UIView, BlurryBackground, host::View,
    objc::Readable<"wallpaperColor", &BlurryBackground::color>,
    objc::Readable<"wallpaperPhase", &BlurryBackground::phase>,
    objc::Method<"setWallpaperColor:phase:", &BlurryBackground::setWallpaperColor>,
    objc::Readable<"wallpaperBackgroundRect", &BlurryBackground::rect, "_backgroundRect">,
    objc::Readable<"wallpaperContents", &BlurryBackground::contents, "_backgroundContents">,
    objc::Readable<"fallbackColor", &BlurryBackground::fallback>,
    objc::Method<"setWallpaperBackgroundRect:forContents:withFallbackColor:",
                 &BlurryBackground::setWallpaperBackground>)

OBJC_CLASS_NAMED(SBFolderIconBackgroundView, SBIconBlurryBackgroundView, FolderBackground,
                 BlurryBackground)
