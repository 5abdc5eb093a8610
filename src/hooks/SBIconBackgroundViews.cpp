#include "hooks/SBIconBackgroundViews.h"

#include "hooks/shared_manager.h"

namespace varnix::icon_background {

constinit objc::Hook<void(Blurry*, CGRect, NSObject*, CGColorRef)> setWallpaperBackgroundRect;

namespace {

constexpr CGFloat kAlpha = CGFloat(0.6);

bool areFoldersDyed() {
  return send<NSInteger>(sharedManager, "folderEnabled"_sel) != kKeepsItsLook;
}

/// Lives as long as its autoreleased UIColor.
CGColorRef folderColor() {
  auto* color = send<UIColor*>(sharedManager, "folderDye"_sel);
  color = send<UIColor*>(color, "colorWithAlphaComponent:"_sel, kAlpha);
  return send<CGColorRef>(color, "CGColor"_sel);
}

}  // namespace

CGColorRef folderColorOr(CGColorRef color) { return areFoldersDyed() ? folderColor() : color; }

// Without contents the view shows the flat colour instead of its piece of blurred wallpaper.
void dyedSetWallpaperBackgroundRect(Blurry* self, SEL cmd, CGRect rect, NSObject* contents,
                                    CGColorRef fallback) {
  if (areFoldersDyed()) {
    contents = nullptr;
    fallback = folderColor();
  }
  setWallpaperBackgroundRect.original(self, cmd, rect, contents, fallback);
}

}  // namespace varnix::icon_background
