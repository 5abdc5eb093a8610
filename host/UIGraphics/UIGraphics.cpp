// UIKit's image contexts: one stack a thread.
#include <cmath>
#include <vector>

#include "CoreGraphics/objects.h"
#include "export.h"
#include "objc/owned.h"
#include "platform/UIKit.h"

namespace {

constexpr CGFloat kScreenScale = 2;
constexpr CGFloat kLongestSide = 32767;

struct ImageContext {
  Strong<CGContext> bitmap;  ///< nil for a size that nothing can be drawn in
  CGFloat scale;
};

thread_local std::vector<ImageContext> contexts;

CGContextRef bitmapFor(CGSize size, bool opaque, CGFloat scale) {
  const CGFloat width = std::ceil(size.width * scale);
  const CGFloat height = std::ceil(size.height * scale);
  if (!(width >= 1 && height >= 1 && width <= kLongestSide && height <= kLongestSide))
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

CGContextRef top() { return contexts.empty() ? nullptr : contexts.back().bitmap.get(); }

}  // namespace

extern "C" {

HOST_EXPORT void UIGraphicsBeginImageContextWithOptions(CGSize size, bool opaque, CGFloat scale) {
  if (scale == 0) scale = kScreenScale;
  contexts.push_back({Strong<CGContext>::adopt(bitmapFor(size, opaque, scale)), scale});
}

HOST_EXPORT CGContextRef UIGraphicsGetCurrentContext() { return top(); }

HOST_EXPORT UIImage* UIGraphicsGetImageFromCurrentImageContext() {
  const objc::Owned<CGImageRef, &CGImageRelease> image(CGBitmapContextCreateImage(top()));
  if (image == nullptr) return nullptr;
  return send<UIImage*>(objc_getClass("UIImage"), "imageWithCGImage:scale:orientation:"_sel,
                        static_cast<CGImageRef>(image), contexts.back().scale, NSInteger{0});
}

HOST_EXPORT void UIGraphicsEndImageContext() {
  if (!contexts.empty()) contexts.pop_back();
}
}
