// CoreGraphics' images and contexts over a test's bytes.
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
/// Blue, green, red, alpha. The context draws directly into these bytes.
inline constexpr CGBitmapInfo kBgra = kCGImageAlphaPremultipliedFirst | kCGBitmapByteOrder32Little;

/// Numbers whose squares do not fit a CGFloat: too large, and too close to zero.
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
CGImageRef createImage(const Bytes& bytes, const Layout& layout);

/// Uses these bytes, with 8 bits a component. Owned by the caller.
CGContextRef createContext(Bytes& bytes, std::size_t width, std::size_t height,
                           CGBitmapInfo info = kRgba, std::size_t bytesPerRow = 0);

/// The image stretched to that many pixels, as premultiplied red, green, blue and alpha.
Bytes drawn(CGImageRef image, std::size_t width, std::size_t height);

/// The image pixel for pixel.
Bytes drawn(CGImageRef image);

/// Noise, the same in every run.
Bytes noise(std::size_t count, std::uint32_t seed = 1);

/// Noise whose colours do not exceed their alpha.
Bytes premultipliedNoise(std::size_t pixels, std::uint32_t seed = 1);

}  // namespace test
