#include "color/RecolorImage.h"

#include "objc/owned.h"

namespace varnix::Color {

namespace {

/// One colour from end to end; nil for a nil colour.
CGGradientRef plainGradient(UIColor* color) {
  const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
  auto* stop = send<NSObject*>(color, "CGColor"_sel);
  NSObject* stops[] = {stop, stop};
  return CGGradientCreateWithColors(
      space, NSArray::arrayWithObjects(stops, stop == nullptr ? 0 : 2), nullptr);
}

UIImage* silhouette(UIImage* image, UIColor* color, CGSize size, CGFloat scale) {
  UIGraphicsBeginImageContextWithOptions(size, false, scale);
  CGContextRef context = UIGraphicsGetCurrentContext();
  UIImage* result = nullptr;
  if (context != nullptr) {
    CGContextTranslateCTM(context, 0, size.height);
    CGContextScaleCTM(context, 1, -1);
    CGContextSetBlendMode(context, CGBlendMode::normal);
    const objc::Owned<CGGradientRef, &CGGradientRelease> gradient(plainGradient(color));
    CGContextClipToMask(context, {{0, 0}, size}, send<CGImageRef>(image, "CGImage"_sel));
    CGContextDrawLinearGradient(context, gradient, {0, 0}, {0, size.height}, 0);
    result = UIGraphicsGetImageFromCurrentImageContext();
  }
  UIGraphicsEndImageContext();
  return result;
}

}  // namespace

UIImage* RecolorImage(UIImage* image, UIColor* color) {
  const auto capInsets = send<UIEdgeInsets>(image, "capInsets"_sel);
  const auto renderingMode = send<NSInteger>(image, "renderingMode"_sel);
  const auto alignment = send<UIEdgeInsets>(image, "alignmentRectInsets"_sel);
  const auto size = send<CGSize>(image, "size"_sel);
  const auto scale = send<CGFloat>(image, "scale"_sel);

  auto* result = silhouette(image, color, size, scale);
  result = send<UIImage*>(result, "imageWithAlignmentRectInsets:"_sel, alignment);
  result = send<UIImage*>(result, "imageWithRenderingMode:"_sel, renderingMode);
  return send<UIImage*>(result, "resizableImageWithCapInsets:"_sel, capInsets);
}

}  // namespace varnix::Color
