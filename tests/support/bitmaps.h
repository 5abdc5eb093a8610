// CoreGraphics' images and contexts over bytes that a test gives.
#pragma once

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "CoreGraphics/CoreGraphics.h"
#include "objc/owned.h"

namespace test {

using Bytes = std::vector<std::uint8_t>;
using Space = objc::Owned<CGColorSpaceRef, &CGColorSpaceRelease>;
using Provider = objc::Owned<CGDataProviderRef, &CGDataProviderRelease>;
using Bitmap = objc::Owned<CGImageRef, &CGImageRelease>;
using Context = objc::Owned<CGContextRef, &CGContextRelease>;

inline constexpr CGBitmapInfo kRgba = kCGImageAlphaPremultipliedLast;
/// The bytes blue, green, red, alpha: drawn into where they are.
inline constexpr CGBitmapInfo kBgra = kCGImageAlphaPremultipliedFirst | kCGBitmapByteOrder32Little;

/// Numbers whose squares a CGFloat cannot hold: beyond its range, and too close to nothing.
inline constexpr CGFloat kHuge = std::numeric_limits<CGFloat>::max() / 4;
inline constexpr CGFloat kTiny = std::numeric_limits<CGFloat>::min();

struct Layout {
  std::size_t width = 1, height = 1;
  std::size_t bitsPerComponent = 8, bitsPerPixel = 32;
  CGBitmapInfo info = kRgba;
  bool isGrey = false;
  std::size_t bytesPerRow = 0;  ///< 0 for no padding
  std::vector<CGFloat> decode{};
};

/// Owned by the caller. The bytes are copied.
inline CGImageRef createImage(const Bytes& bytes, const Layout& layout) {
  auto* copy = new Bytes(bytes);
  const Provider provider(CGDataProviderCreateWithData(
      copy, copy->data(), copy->size(),
      [](void* info, const void*, std::size_t) { delete static_cast<Bytes*>(info); }));
  const Space space(layout.isGrey ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB());
  const std::size_t row =
      layout.bytesPerRow != 0 ? layout.bytesPerRow : layout.width * layout.bitsPerPixel / 8;
  return CGImageCreate(layout.width, layout.height, layout.bitsPerComponent, layout.bitsPerPixel,
                       row, space, layout.info, provider,
                       layout.decode.empty() ? nullptr : layout.decode.data(), true,
                       CGColorRenderingIntent::standard);
}

/// Over the bytes, 8 bits a component. Owned by the caller.
inline CGContextRef createContext(Bytes& bytes, std::size_t width, std::size_t height,
                                  CGBitmapInfo info = kRgba, std::size_t bytesPerRow = 0) {
  const Space space(CGColorSpaceCreateDeviceRGB());
  if (bytesPerRow == 0) bytesPerRow = width * 4;
  bytes.resize(bytesPerRow * height);
  return CGBitmapContextCreate(bytes.data(), width, height, 8, bytesPerRow, space, info);
}

/// The image stretched over so many pixels, as premultiplied red, green, blue and alpha.
inline Bytes drawn(CGImageRef image, std::size_t width, std::size_t height) {
  Bytes bytes;
  const Context context(createContext(bytes, width, height));
  CGContextDrawImage(context, {{0, 0}, {static_cast<CGFloat>(width), static_cast<CGFloat>(height)}},
                     image);
  return bytes;
}

/// The image pixel for pixel.
inline Bytes drawn(CGImageRef image) {
  return drawn(image, CGImageGetWidth(image), CGImageGetHeight(image));
}

/// Bytes of noise, the same at each run.
inline Bytes noise(std::size_t count, std::uint32_t seed = 1) {
  Bytes bytes(count);
  for (auto& byte : bytes) {
    seed = seed * 1664525 + 1013904223;
    byte = static_cast<std::uint8_t>(seed >> 24);
  }
  return bytes;
}

/// Noise whose colours do not exceed their alpha.
inline Bytes premultipliedNoise(std::size_t pixels, std::uint32_t seed = 1) {
  Bytes bytes = noise(pixels * 4, seed);
  for (std::size_t i = 0; i < bytes.size(); i += 4) {
    for (std::size_t c = 0; c < 3; ++c)
      bytes[i + c] = static_cast<std::uint8_t>(bytes[i + c] * bytes[i + 3] / 255);
  }
  return bytes;
}

}  // namespace test
