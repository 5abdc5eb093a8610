// The stand-in's own question to an image: which colour its shape has.
#include <algorithm>
#include <cstdint>
#include <vector>

#include "UIKit/UIImage.h"
#include "objc/define.h"

namespace {

struct Pixel {
  std::uint8_t red, green, blue, alpha;  ///< the colours multiplied by alpha
};

std::vector<Pixel> pixelsOf(CGImageRef bitmap) {
  const std::size_t width = CGImageGetWidth(bitmap);
  const std::size_t height = CGImageGetHeight(bitmap);
  std::vector<Pixel> pixels(width * height);
  CGColorSpaceRef space = CGColorSpaceCreateDeviceRGB();
  CGContextRef context =
      CGBitmapContextCreate(pixels.data(), width, height, 8, width * sizeof(Pixel), space,
                            kCGBitmapByteOrder32Big | kCGImageAlphaPremultipliedLast);
  const CGSize size{static_cast<CGFloat>(width), static_cast<CGFloat>(height)};
  CGContextDrawImage(context, {{0, 0}, size}, bitmap);
  CGContextRelease(context);
  CGColorSpaceRelease(space);
  return pixels;
}

struct CoveredImage : host::Image {
  /// The mean of its most covered pixels, with their alpha. Nil where none is covered.
  UIColor* coveredColor() {
    if (bitmap == nullptr) return nullptr;
    const std::vector<Pixel> pixels = pixelsOf(bitmap);
    std::uint8_t most = 0;
    for (const Pixel& pixel : pixels) most = std::max(most, pixel.alpha);
    if (most == 0) return nullptr;
    std::uint64_t count = 0, red = 0, green = 0, blue = 0;
    for (const Pixel& pixel : pixels) {
      if (pixel.alpha != most) continue;
      ++count;
      red += pixel.red;
      green += pixel.green;
      blue += pixel.blue;
    }
    auto mean = [&](std::uint64_t sum) {
      return static_cast<CGFloat>(sum) / static_cast<CGFloat>(count * most);
    };
    return UIColor::colorWithRed(mean(red), mean(green), mean(blue),
                                 static_cast<CGFloat>(most) / 255);
  }
};

}  // namespace

OBJC_CATEGORY_OF_OWN(UIImage, Covered, objc::Method<"_coveredColor", &CoveredImage::coveredColor>)
