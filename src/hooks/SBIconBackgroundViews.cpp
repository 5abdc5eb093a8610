#include "hooks/SBIconBackgroundViews.h"

#include "hooks/shared_manager.h"

namespace varnix::icon_background {

constinit objc::Hook<Blurry::setWallpaperBackgroundRect> setWallpaperBackgroundRect;

namespace {

constexpr CGFloat kAlpha = CGFloat(0.6);

bool areFoldersDyed() {
  return send(sharedManager, VNXManager::enabled<"folder">) != kKeepsItsLook;
}

/// Lives as long as its autoreleased UIColor.
CGColorRef folderColor() {
  UIColor* color = send(sharedManager, VNXManager::dyeOf<"folder">);
  return send(send(color, UIColor::colorWithAlphaComponent, kAlpha), UIColor::CGColor);
}

}  // namespace

CGColorRef folderColorOr(CGColorRef color) { return areFoldersDyed() ? folderColor() : color; }

// Without contents the view shows the plain colour instead of its piece of blurred wallpaper.
void dyedSetWallpaperBackgroundRect(Blurry* self, SEL cmd, CGRect rect, NSObject* contents,
                                    CGColorRef fallback) {
  if (areFoldersDyed()) {
    contents = nullptr;
    fallback = folderColor();
  }
  setWallpaperBackgroundRect.original(self, cmd, rect, contents, fallback);
}

}  // namespace varnix::icon_background
