#include "color/AverageColor.h"

#include <cstdint>

#include "objc/owned.h"

namespace varnix::Color {

UIColor* AverageColor(UIImage* image) {
  std::uint8_t pixel[4] = {};
  {
    const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
    const objc::Owned<CGContextRef, &CGContextRelease> context(
        CGBitmapContextCreate(pixel, 1, 1, 8, sizeof pixel, space,
                              kCGImageAlphaPremultipliedLast | kCGBitmapByteOrder32Big));
    CGContextDrawImage(context, {{0, 0}, {1, 1}}, send(image, UIImage::CGImage));
  }
  const double alpha = pixel[3] / 255.0;
  auto channel = [&](int index) {
    // Dividing by alpha would give the visible colour, but the dyed surfaces need a deeper one.
    const double value = pixel[3] > 0 ? alpha / 255.0 * pixel[index] : pixel[index] / 255.0;
    return static_cast<CGFloat>(value);
  };
  return UIColor::colorWithRed(channel(0), channel(1), channel(2), static_cast<CGFloat>(alpha));
}

}  // namespace varnix::Color
