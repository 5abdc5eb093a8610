#include "color/RecolorImage.h"

#include "objc/owned.h"

namespace varnix::Color {

namespace {

/// One colour from end to end; nil for a nil colour.
CGGradientRef plainGradient(UIColor* color) {
  const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
  // A CGColor is an object to an array.
  auto* stop = objc::bridged(send(color, UIColor::CGColor));
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
    CGContextClipToMask(context, {{0, 0}, size}, send(image, UIImage::CGImage));
    CGContextDrawLinearGradient(context, gradient, {0, 0}, {0, size.height}, 0);
    result = UIGraphicsGetImageFromCurrentImageContext();
  }
  UIGraphicsEndImageContext();
  return result;
}

}  // namespace

UIImage* RecolorImage(UIImage* image, UIColor* color) {
  const UIEdgeInsets capInsets = send(image, UIImage::capInsets);
  const NSInteger renderingMode = send(image, UIImage::renderingMode);
  const UIEdgeInsets alignment = send(image, UIImage::alignmentRectInsets);
  const CGSize size = send(image, UIImage::size);
  const CGFloat scale = send(image, UIImage::scale);

  UIImage* result = silhouette(image, color, size, scale);
  result = send(result, UIImage::imageWithAlignmentRectInsets, alignment);
  result = send(result, UIImage::imageWithRenderingMode, renderingMode);
  return send(result, UIImage::resizableImageWithCapInsets, capInsets);
}

}  // namespace varnix::Color
