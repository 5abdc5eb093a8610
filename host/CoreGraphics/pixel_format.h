// How a bitmap lays its pixels down, and the way from and to cairo's: 32 bits, alpha on top,
// premultiplied, in the machine's byte order.
#pragma once

#include <cairo.h>

#include <cstddef>
#include <cstdint>
#include <optional>

#include "platform/CoreGraphics.h"

namespace host {

struct PixelFormat {
  std::size_t bitsPerComponent;  ///< 8 or 16
  std::size_t bitsPerPixel;
  std::size_t colors;  ///< 1 for grey, 3 for RGB, 0 for alpha alone
  CGBitmapInfo info;

  CGBitmapInfo alpha() const { return info & kCGBitmapAlphaInfoMask; }
  std::size_t bytesPerPixel() const { return bitsPerPixel / 8; }
};

/// Of what is drawn on: cairo takes no more, either way.
inline constexpr std::size_t kLongestSide = 32'767;
/// Of an image. What is longer than cairo's surfaces is always drawn smaller than it is.
inline constexpr std::size_t kLongestImage = 65'535;

/// The format where the parameters fit one that can be read.
std::optional<PixelFormat> imageFormat(std::size_t bitsPerComponent, std::size_t bitsPerPixel,
                                       std::size_t colors, CGBitmapInfo info);
/// The format where the platform draws into such bitmaps: fewer than it reads.
std::optional<PixelFormat> contextFormat(std::size_t bitsPerComponent, std::size_t colors,
                                         CGBitmapInfo info);

/// Cairo's name for the format where it has one: it draws into such bitmaps itself.
std::optional<cairo_format_t> cairosOwn(const PixelFormat& format);

/// One row to cairo's pixels, premultiplied ones as they are. Decode has two values a colour, or is
/// null.
void unpackRow(const PixelFormat& format, const std::uint8_t* row, std::size_t width,
               const CGFloat* decode, std::uint32_t* pixels);
/// One row of cairo's pixels to the memory of a context of that format. Bytes that the format skips
/// stay.
void packRow(const PixelFormat& format, const std::uint32_t* pixels, std::size_t width,
             std::uint8_t* row);

}  // namespace host
