#include "pixels.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>

#include "objc/autorelease_pool.h"
#include "objc/owned.h"
#include "runtime/send.h"

namespace bench {

namespace {

constexpr std::size_t kBytesPerPixel = 4;

using Space = objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease>;

std::uint8_t wave(double position, int noise) {
  return static_cast<std::uint8_t>(std::lround(120 + 100 * std::sin(position)) + noise);
}

}  // namespace

Pixels generatedPixels(int width, int height) {
  Pixels pixels{width, height, {}};
  std::mt19937 random(1);
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const double u = 6.0 * x / width;
      const double v = 6.0 * y / height;
      const auto noise = static_cast<int>(random() % 16);
      pixels.bytes.insert(pixels.bytes.end(), {wave(u, noise), wave(v + u / 2, noise),
                                               wave(2 - v, noise), std::uint8_t{255}});
    }
  }
  return pixels;
}

std::optional<Pixels> pixelsOfFile(const std::string& path, int width, int height) {
  const objc::AutoreleasePool pool;
  std::ifstream file(path, std::ios::binary);
  const std::string bytes(std::istreambuf_iterator<char>(file), {});
  const auto image =
      Strong<UIImage>::adopt(send(objc::alloc<UIImage>(), UIImage::initWithData,
                                  NSData::dataWithBytes(bytes.data(), bytes.size())));
  if (image == nullptr) return {};
  Pixels pixels{width, height, {}};
  const auto bytesPerRow = static_cast<std::size_t>(width) * kBytesPerPixel;
  pixels.bytes.assign(bytesPerRow * static_cast<std::size_t>(height), 255);
  const Space space(CGColorSpaceCreateDeviceRGB());
  const objc::Owned<CGContextRef, &CGContextRelease> context(CGBitmapContextCreate(
      pixels.bytes.data(), static_cast<std::size_t>(width), static_cast<std::size_t>(height), 8,
      bytesPerRow, space, kCGImageAlphaPremultipliedLast));
  const CGRect whole{{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}};
  CGContextDrawImage(context, whole, send<CGImageRef>(image.get(), "CGImage"_sel));
  return pixels;
}

Strong<UIImage> imageOver(const Pixels& pixels) {
  const Space space(CGColorSpaceCreateDeviceRGB());
  const objc::Owned<CGDataProviderRef, &CGDataProviderRelease> provider(
      CGDataProviderCreateWithData(nullptr, pixels.bytes.data(), pixels.bytes.size(), nullptr));
  const objc::Owned<CGImageRef, &CGImageRelease> image(CGImageCreate(
      static_cast<std::size_t>(pixels.width), static_cast<std::size_t>(pixels.height), 8, 32,
      static_cast<std::size_t>(pixels.width) * kBytesPerPixel, space,
      kCGImageAlphaPremultipliedLast, provider, nullptr, false, CGColorRenderingIntent::standard));
  return Strong<UIImage>::retain(UIImage::imageWithCGImage(image));
}

std::string hex(UIColor* color) {
  CGFloat red = 0;
  CGFloat green = 0;
  CGFloat blue = 0;
  if (!send<bool>(color, "getRed:green:blue:alpha:"_sel, &red, &green, &blue,
                  static_cast<CGFloat*>(nullptr))) {
    return "none";
  }
  auto byte = [](CGFloat value) { return static_cast<unsigned>(std::lround(value * 255)) & 255U; };
  char text[8];
  std::snprintf(text, sizeof text, "#%02x%02x%02x", byte(red), byte(green), byte(blue));
  return text;
}

}  // namespace bench
