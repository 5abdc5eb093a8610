#include "color/TintImage.h"

#include "color/components.h"

namespace varnix::Color {

UIImage* TintImage(UIImage* image, UIColor* color) {
  const CGSize size = send(image, UIImage::size);
  const CGRect whole{{0, 0}, size};
  UIGraphicsBeginImageContextWithOptions(size, false, 1);
  CGContextRef context = UIGraphicsGetCurrentContext();
  UIImage* result = nullptr;
  if (context != nullptr) {
    CGImageRef bitmap = send(image, UIImage::CGImage);
    send(image, UIImage::drawAtPoint, CGPoint{0, 0});
    CGContextSaveGState(context);
    CGContextTranslateCTM(context, 0, size.height);
    CGContextScaleCTM(context, 1, -1);
    CGContextClipToMask(context, whole, bitmap);
    CGContextFillRect(context, whole);  // black: what was drawn so far shows only at soft edges
    CGContextDrawImage(context, whole, bitmap);
    CGContextSetBlendMode(context, CGBlendMode::hue);
    const Hsb parts = hsb(color);
    send(UIColor::colorWithHue(parts.hue, 1, 1, parts.alpha), UIColor::set);
    CGContextAddRect(context, whole);
    CGContextFillPath(context);
    CGContextRestoreGState(context);
    result = UIGraphicsGetImageFromCurrentImageContext();
  }
  UIGraphicsEndImageContext();
  return result;
}

}  // namespace varnix::Color
