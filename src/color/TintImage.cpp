#include "color/TintImage.h"

namespace varnix::Color {

UIImage* TintImage(UIImage* image, UIColor* color) {
  const auto size = send<CGSize>(image, "size"_sel);
  const CGRect whole{{0, 0}, size};
  UIGraphicsBeginImageContextWithOptions(size, false, 1);
  CGContextRef context = UIGraphicsGetCurrentContext();
  UIImage* result = nullptr;
  if (context != nullptr) {
    auto bitmap = send<CGImageRef>(image, "CGImage"_sel);
    send<void>(image, "drawAtPoint:"_sel, CGPoint{0, 0});
    CGContextSaveGState(context);
    CGContextTranslateCTM(context, 0, size.height);
    CGContextScaleCTM(context, 1, -1);
    CGContextClipToMask(context, whole, bitmap);
    CGContextFillRect(context, whole);  // black: what was drawn so far shows at soft edges only
    CGContextDrawImage(context, whole, bitmap);
    CGContextSetBlendMode(context, CGBlendMode::hue);
    UIColor::colorWithHue(send<CGFloat>(color, "hue"_sel), 1, 1, send<CGFloat>(color, "alpha"_sel))
        ->set();
    CGContextAddRect(context, whole);
    CGContextFillPath(context);
    CGContextRestoreGState(context);
    result = UIGraphicsGetImageFromCurrentImageContext();
  }
  UIGraphicsEndImageContext();
  return result;
}

}  // namespace varnix::Color
