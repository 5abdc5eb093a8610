#include "CoreGraphics/pixel_format.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>

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

/// Where the byte lies that comes at that place of a pixel in big-endian order.
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

/// One component, 0 to 255; 16 bits are rounded.
unsigned component(const PixelFormat& format, const std::uint8_t* pixel, std::size_t index) {
  if (format.bitsPerComponent == 8) return pixel[place(format, index)];
  const unsigned high = pixel[place(format, index * 2)];
  const unsigned low = pixel[place(format, index * 2 + 1)];
  return ((high << 8 | low) * 255 + 32767) / 65535;
}

unsigned decoded(unsigned value, const CGFloat* range) {
  const CGFloat part = range[0] + (range[1] - range[0]) * value / 255;
  return static_cast<unsigned>(std::lround(std::clamp<CGFloat>(part, 0, 1) * 255));
}

unsigned multiplied(unsigned color, unsigned alpha) { return (color * alpha + 127) / 255; }

}  // namespace

std::optional<PixelFormat> imageFormat(std::size_t bitsPerComponent, std::size_t bitsPerPixel,
                                       std::size_t colors, CGBitmapInfo info) {
  if (bitsPerComponent != 8 && bitsPerComponent != 16) return {};
  if ((info & kCGBitmapFloatComponents) != 0) return {};
  const CGBitmapInfo alpha = info & kCGBitmapAlphaInfoMask;
  if (alpha > kCGImageAlphaOnly) return {};
  if (alpha == kCGImageAlphaOnly) colors = 0;
  const CGBitmapInfo order = info & kCGBitmapByteOrderMask;
  if (order > kCGBitmapByteOrder32Big || bitsPerPixel % 8 != 0) return {};
  const std::size_t components = colors + (alpha == kCGImageAlphaNone ? 0 : 1);
  const std::size_t needed = components * bitsPerComponent;
  // Without alpha a pixel may be wider than its components: what is over is skipped.
  if (bitsPerPixel != needed &&
      !(alpha == kCGImageAlphaNone && bitsPerPixel == needed + bitsPerComponent))
    return {};
  const bool swaps = order == kCGBitmapByteOrder32Little || order == kCGBitmapByteOrder16Little;
  const std::size_t unit = order == kCGBitmapByteOrder32Little ? 32 : 16;
  if (swaps && bitsPerPixel % unit != 0) return {};
  return PixelFormat{bitsPerComponent, bitsPerPixel, colors, info};
}

std::optional<PixelFormat> contextFormat(std::size_t bitsPerComponent, std::size_t colors,
                                         CGBitmapInfo info) {
  const CGBitmapInfo alpha = info & kCGBitmapAlphaInfoMask;
  if (bitsPerComponent != 8 || isStraight(alpha)) return {};
  if (alpha == kCGImageAlphaOnly) return imageFormat(8, 8, 0, info);
  if (colors == 1) {
    if (alpha != kCGImageAlphaNone) return {};
    return imageFormat(8, 8, 1, info);
  }
  if (alpha == kCGImageAlphaNone) return {};
  return imageFormat(8, 32, 3, info);
}

bool isCairosOwn(const PixelFormat& format) {
  const CGBitmapInfo order = format.info & kCGBitmapByteOrderMask;
  return format.bitsPerPixel == 32 && format.colors == 3 && format.bitsPerComponent == 8 &&
         format.alpha() == kCGImageAlphaPremultipliedFirst &&
         std::endian::native == std::endian::little && order == kCGBitmapByteOrder32Little;
}

void unpackRow(const PixelFormat& format, const std::uint8_t* row, std::size_t width,
               const CGFloat* decode, std::uint32_t* pixels) {
  const CGBitmapInfo alphaPlace = format.alpha();
  const std::size_t first = alphaIsFirst(alphaPlace) ? 1 : 0;
  const std::size_t alphaIndex = first == 1 ? 0 : format.colors;
  for (std::size_t x = 0; x < width; ++x, row += format.bytesPerPixel()) {
    const unsigned alpha = hasAlpha(alphaPlace) ? component(format, row, alphaIndex) : 255;
    std::array<unsigned, 3> rgb{};
    for (std::size_t i = 0; i < format.colors; ++i) {
      unsigned value = component(format, row, first + i);
      if (decode != nullptr) value = decoded(value, decode + 2 * i);
      rgb[i] = isStraight(alphaPlace) ? multiplied(value, alpha) : std::min(value, alpha);
    }
    if (format.colors == 1) rgb[1] = rgb[2] = rgb[0];
    pixels[x] = alpha << 24 | rgb[0] << 16 | rgb[1] << 8 | rgb[2];
  }
}

void packRow(const PixelFormat& format, const std::uint32_t* pixels, std::size_t width,
             std::uint8_t* row) {
  const CGBitmapInfo alphaPlace = format.alpha();
  const std::size_t first = alphaIsFirst(alphaPlace) ? 1 : 0;
  for (std::size_t x = 0; x < width; ++x, row += format.bytesPerPixel()) {
    const std::uint32_t pixel = pixels[x];
    auto part = [pixel](int shift) { return static_cast<std::uint8_t>(pixel >> shift); };
    if (format.colors == 0) {
      row[0] = part(24);
    } else if (format.colors == 1) {
      // Rec. 601 luma, as the device's generic grey has it.
      row[0] =
          static_cast<std::uint8_t>((part(16) * 299 + part(8) * 587 + part(0) * 114 + 500) / 1000);
    } else {
      for (std::size_t i = 0; i < 3; ++i)
        row[place(format, first + i)] = part(16 - 8 * static_cast<int>(i));
      if (hasAlpha(alphaPlace)) row[place(format, first == 1 ? 0 : 3)] = part(24);
    }
  }
}

}  // namespace host
