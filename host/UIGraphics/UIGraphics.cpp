// UIKit's image contexts: one stack for each thread.
#include <cmath>
#include <vector>

#include "CoreGraphics/objects.h"
#include "UIGraphics/UIGraphics.h"
#include "objc/owned.h"
#include "platform/UIKit.h"

namespace {

constexpr CGFloat kScreenScale = 2;

struct Entry {
  Strong<CGContext> bitmap;  ///< nil for a size without pixels
  CGFloat scale;
  bool isPushed;  ///< the caller made the context and pushed it
};

thread_local std::vector<Entry> entries;

/// Sizes are in points, so a size in pixels may be slightly off.
CGFloat pixels(CGFloat points, CGFloat scale) {
  constexpr CGFloat kRounding = static_cast<CGFloat>(1e-4);
  return std::ceil(points * scale - kRounding);
}

CGContextRef bitmapFor(CGSize size, bool opaque, CGFloat scale) {
  const CGFloat width = pixels(size.width, scale);
  const CGFloat height = pixels(size.height, scale);
  constexpr CGFloat kLongest{host::kLongestSide};
  if (!(scale > 0 && width >= 1 && height >= 1 && width <= kLongest && height <= kLongest))
    return nullptr;
  const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
  CGContextRef context = CGBitmapContextCreate(
      nullptr, static_cast<std::size_t>(width), static_cast<std::size_t>(height), 8, 0, space,
      kCGBitmapByteOrder32Little |
          (opaque ? kCGImageAlphaNoneSkipFirst : kCGImageAlphaPremultipliedFirst));
  // UIKit's origin is the upper left corner.
  CGContextTranslateCTM(context, 0, height);
  CGContextScaleCTM(context, scale, -scale);
  return context;
}

CGContextRef top() { return entries.empty() ? nullptr : entries.back().bitmap.get(); }

void pop(bool pushed) {
  if (!entries.empty() && entries.back().isPushed == pushed) entries.pop_back();
}

}  // namespace

extern "C" {

HOST_EXPORT void UIGraphicsBeginImageContextWithOptions(CGSize size, bool opaque, CGFloat scale) {
  if (scale == 0) scale = kScreenScale;
  entries.push_back({Strong<CGContext>::adopt(bitmapFor(size, opaque, scale)), scale, false});
}

HOST_EXPORT void UIGraphicsBeginImageContext(CGSize size) {
  UIGraphicsBeginImageContextWithOptions(size, false, 1);
}

HOST_EXPORT void UIGraphicsPushContext(CGContextRef context) {
  entries.push_back({Strong<CGContext>::retain(context), 1, true});
}

HOST_EXPORT void UIGraphicsPopContext() { pop(true); }

HOST_EXPORT CGContextRef UIGraphicsGetCurrentContext() { return top(); }

HOST_EXPORT UIImage* UIGraphicsGetImageFromCurrentImageContext() {
  if (entries.empty() || entries.back().isPushed) return nullptr;
  const objc::Owned<CGImageRef, &CGImageRelease> image(CGBitmapContextCreateImage(top()));
  if (image == nullptr) return nullptr;
  return send<UIImage*>(objc_getClass("UIImage"), "imageWithCGImage:scale:orientation:"_sel,
                        static_cast<CGImageRef>(image), entries.back().scale, NSInteger{0});
}

HOST_EXPORT void UIGraphicsEndImageContext() { pop(false); }
}
