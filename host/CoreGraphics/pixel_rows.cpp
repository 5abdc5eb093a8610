// Converts rows of pixels from any format to cairo's, and back.
#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstring>

#include "CoreGraphics/pixel_format.h"

namespace host {

namespace {

bool alphaIsFirst(CGBitmapInfo alpha) {
  return alpha == kCGImageAlphaPremultipliedFirst || alpha == kCGImageAlphaFirst ||
         alpha == kCGImageAlphaNoneSkipFirst;
}
bool hasAlpha(CGBitmapInfo alpha) {
  return alpha == kCGImageAlphaPremultipliedFirst || alpha == kCGImageAlphaPremultipliedLast ||
         alpha == kCGImageAlphaFirst || alpha == kCGImageAlphaLast || alpha == kCGImageAlphaOnly;
}
bool isStraight(CGBitmapInfo alpha) {
  return alpha == kCGImageAlphaFirst || alpha == kCGImageAlphaLast;
}

/// Offset of a byte within a pixel, from its place in big-endian order.
std::size_t place(const PixelFormat& format, std::size_t index) {
  switch (format.info & kCGBitmapByteOrderMask) {
    case kCGBitmapByteOrder32Little:
      return (index & ~std::size_t{3}) | (3 - (index & 3));
    case kCGBitmapByteOrder16Little:
      return index ^ 1;
    default:
      return index;
  }
}

/// The rounded product.
std::uint32_t multiplied(std::uint32_t color, std::uint32_t alpha) {
  const std::uint32_t product = color * alpha + 128;
  return (product + (product >> 8)) >> 8;
}

// --- four bytes a pixel, colours in 8 bits -------------------------------------------------------

bool isOfFourBytes(const PixelFormat& format) {
  return format.bitsPerComponent == 8 && format.bitsPerPixel == 32 && format.colors == 3;
}

/// How far a component's byte is above the lowest byte of a pixel read as a number, in bits.
struct Shifts {
  explicit Shifts(const PixelFormat& format) {
    const std::size_t first = alphaIsFirst(format.alpha()) ? 1 : 0;
    auto shift = [&](std::size_t index) {
      const std::size_t byte = place(format, index);
      return static_cast<int>(std::endian::native == std::endian::little ? byte : 3 - byte) * 8;
    };
    red = shift(first);
    green = shift(first + 1);
    blue = shift(first + 2);
    alpha = shift(first == 1 ? 0 : 3);
  }

  int red, green, blue, alpha;
};

template <bool hasAlphaByte, bool multiplies>
void unpackFourBytes(const Shifts& at, const std::uint8_t* row, std::size_t width,
                     std::uint32_t* pixels) {
  const auto [redAt, greenAt, blueAt, alphaAt] = at;
  for (std::size_t x = 0; x < width; ++x) {
    std::uint32_t pixel;
    std::memcpy(&pixel, row + x * 4, 4);
    const std::uint32_t alpha = hasAlphaByte ? pixel >> alphaAt & 0xff : 0xff;
    std::uint32_t red = pixel >> redAt & 0xff;
    std::uint32_t green = pixel >> greenAt & 0xff;
    std::uint32_t blue = pixel >> blueAt & 0xff;
    if (multiplies) {
      red = multiplied(red, alpha);
      green = multiplied(green, alpha);
      blue = multiplied(blue, alpha);
    }
    pixels[x] = alpha << 24 | red << 16 | green << 8 | blue;
  }
}

void packFourBytes(const PixelFormat& format, const std::uint32_t* pixels, std::size_t width,
                   std::uint8_t* row) {
  const auto [redAt, greenAt, blueAt, alphaAt] = Shifts(format);
  const std::uint32_t skipped = hasAlpha(format.alpha()) ? 0 : std::uint32_t{0xff} << alphaAt;
  for (std::size_t x = 0; x < width; ++x) {
    const std::uint32_t from = pixels[x];
    const std::uint32_t to = (from >> 24) << alphaAt | (from >> 16 & 0xff) << redAt |
                             (from >> 8 & 0xff) << greenAt | (from & 0xff) << blueAt;
    std::uint32_t old;
    std::memcpy(&old, row + x * 4, 4);
    const std::uint32_t now = (to & ~skipped) | (old & skipped);
    std::memcpy(row + x * 4, &now, 4);
  }
}

// --- any format ----------------------------------------------------------------------------------

/// One component, 0 to 255; 16 bits are rounded.
std::uint32_t component(const PixelFormat& format, const std::uint8_t* pixel, std::size_t index) {
  if (format.bitsPerComponent == 8) return pixel[place(format, index)];
  const std::uint32_t high = pixel[place(format, index * 2)];
  const std::uint32_t low = pixel[place(format, index * 2 + 1)];
  return ((high << 8 | low) * 255 + 32767) / 65535;
}

std::uint32_t decoded(std::uint32_t value, const CGFloat* range) {
  const CGFloat part = range[0] + (range[1] - range[0]) * value / 255;
  if (!(part > 0)) return 0;
  return static_cast<std::uint32_t>(std::lround(std::min<CGFloat>(part, 1) * 255));
}

void unpackAny(const PixelFormat& format, const std::uint8_t* row, std::size_t width,
               const CGFloat* decode, std::uint32_t* pixels) {
  const CGBitmapInfo alphaPlace = format.alpha();
  const std::size_t first = alphaIsFirst(alphaPlace) ? 1 : 0;
  const std::size_t alphaIndex = first == 1 ? 0 : format.colors;
  for (std::size_t x = 0; x < width; ++x, row += format.bytesPerPixel()) {
    const std::uint32_t alpha = hasAlpha(alphaPlace) ? component(format, row, alphaIndex) : 255;
    std::array<std::uint32_t, 3> rgb{};
    for (std::size_t i = 0; i < format.colors; ++i) {
      std::uint32_t value = component(format, row, first + i);
      if (decode != nullptr)
        value = std::min(decoded(value, decode + 2 * i), isStraight(alphaPlace) ? 255 : alpha);
      rgb[i] = isStraight(alphaPlace) ? multiplied(value, alpha) : value;
    }
    if (format.colors == 1) rgb[1] = rgb[2] = rgb[0];
    pixels[x] = alpha << 24 | rgb[0] << 16 | rgb[1] << 8 | rgb[2];
  }
}

}  // namespace

void unpackRow(const PixelFormat& format, const std::uint8_t* row, std::size_t width,
               const CGFloat* decode, std::uint32_t* pixels) {
  if (decode != nullptr || !isOfFourBytes(format))
    return unpackAny(format, row, width, decode, pixels);
  const Shifts at(format);
  if (isStraight(format.alpha())) return unpackFourBytes<true, true>(at, row, width, pixels);
  if (hasAlpha(format.alpha())) return unpackFourBytes<true, false>(at, row, width, pixels);
  return unpackFourBytes<false, false>(at, row, width, pixels);
}

void packRow(const PixelFormat& format, const std::uint32_t* pixels, std::size_t width,
             std::uint8_t* row) {
  if (format.colors == 3) return packFourBytes(format, pixels, width, row);
  for (std::size_t x = 0; x < width; ++x) {
    const std::uint32_t pixel = pixels[x];
    auto part = [pixel](int shift) { return pixel >> shift & 0xff; };
    // Rec. 601 luma, like the device's generic grey.
    const std::uint32_t grey = (part(16) * 299 + part(8) * 587 + part(0) * 114 + 500) / 1000;
    row[x] = static_cast<std::uint8_t>(format.colors == 0 ? part(24) : grey);
  }
}

}  // namespace host
