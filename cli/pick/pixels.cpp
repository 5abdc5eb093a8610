#include "pick/pixels.h"

#include <algorithm>
#include <cmath>

#include "CoreGraphics/CoreGraphics.h"
#include "objc/owned.h"
#include "objc/strong.h"

namespace varnix::cli::pick {

namespace {

std::uint8_t byteOf(CGFloat component) {
  return static_cast<std::uint8_t>(std::lround(std::clamp<CGFloat>(component, 0, 1) * 255));
}

UIImage* stretched(UIImage* image, CGSize size) {
  UIGraphicsBeginImageContextWithOptions(size, false, 1);
  send(image, UIImage::drawInRect, {{0, 0}, size});
  UIImage* result = UIGraphicsGetImageFromCurrentImageContext();
  UIGraphicsEndImageContext();
  return result;
}

}  // namespace

Color colorOf(UIColor* color) {
  CGFloat c[4] = {};
  send(color, UIColor::getRed, &c[0], &c[1], &c[2], &c[3]);
  return {byteOf(c[0]), byteOf(c[1]), byteOf(c[2]), byteOf(c[3])};
}

Pixels pixelsOf(UIImage* image, unsigned width, unsigned height) {
  Pixels pixels{width, height, std::vector<std::uint32_t>(std::size_t{width} * height)};
  const CGRect whole{{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}};
  UIImage* upright = stretched(image, whole.size);
  const objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease> space(CGColorSpaceCreateDeviceRGB());
  const objc::Owned<CGContextRef, &CGContextRelease> context(
      CGBitmapContextCreate(pixels.argb.data(), width, height, 8, std::size_t{width} * 4, space,
                            kCGImageAlphaPremultipliedFirst | kCGBitmapByteOrder32Little));
  CGContextDrawImage(context, whole, send(upright, UIImage::CGImage));
  return pixels;
}

std::string takeRawBytes(UIImage* image) {
  CGDataProviderRef provider = CGImageGetDataProvider(send(image, UIImage::CGImage));
  if (provider == nullptr) return {};
  const auto data = Strong<NSData>::adopt(CGDataProviderCopyData(provider));
  std::string bytes(static_cast<const char*>(send(data, NSData::bytes)),
                    send(data, NSData::length));
  CGDataProviderRelease(provider);
  return bytes;
}

}  // namespace varnix::cli::pick
