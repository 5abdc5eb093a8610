#include "CoreGraphics/pixel_format.h"

#include <bit>

namespace host {

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
  // Without alpha a pixel may be wider than its components; the rest is skipped.
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
  const CGBitmapInfo order = info & kCGBitmapByteOrderMask;
  const bool isOf16 = order == kCGBitmapByteOrder16Little || order == kCGBitmapByteOrder16Big;
  if (bitsPerComponent != 8 || isOf16) return {};
  if (alpha == kCGImageAlphaOnly) return imageFormat(8, 8, 0, info);
  if (colors == 1) {
    if (alpha != kCGImageAlphaNone) return {};
    return imageFormat(8, 8, 1, info);
  }
  const bool isStraight = alpha == kCGImageAlphaFirst || alpha == kCGImageAlphaLast;
  if (colors != 3 || alpha == kCGImageAlphaNone || isStraight) return {};
  return imageFormat(8, 32, 3, info);
}

std::optional<cairo_format_t> cairosOwn(const PixelFormat& format) {
  const bool isLaidSo = format.bitsPerPixel == 32 && format.bitsPerComponent == 8 &&
                        std::endian::native == std::endian::little &&
                        (format.info & kCGBitmapByteOrderMask) == kCGBitmapByteOrder32Little;
  if (isLaidSo && format.alpha() == kCGImageAlphaPremultipliedFirst) return CAIRO_FORMAT_ARGB32;
  if (isLaidSo && format.alpha() == kCGImageAlphaNoneSkipFirst) return CAIRO_FORMAT_RGB24;
  return {};
}

}  // namespace host
