// The layout of a bitmap's pixels, and conversion from and to cairo's: 32 bits, alpha on top,
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

/// For bitmaps to draw on: cairo's limit in both directions.
inline constexpr std::size_t kLongestSide = 32'767;
/// For images. One longer than cairo's surfaces is always drawn smaller than it is.
inline constexpr std::size_t kLongestImage = 65'535;

/// The format, if the parameters match one that can be read.
std::optional<PixelFormat> imageFormat(std::size_t bitsPerComponent, std::size_t bitsPerPixel,
                                       std::size_t colors, CGBitmapInfo info);
/// The format, if the platform draws into such bitmaps: fewer than it reads.
std::optional<PixelFormat> contextFormat(std::size_t bitsPerComponent, std::size_t colors,
                                         CGBitmapInfo info);

/// Cairo's name for the format, if it has one: then it draws into such bitmaps directly.
std::optional<cairo_format_t> cairosOwn(const PixelFormat& format);

/// Converts one row to cairo's pixels; premultiplied ones stay as they are. Decode has two values
/// per colour, or is null.
void unpackRow(const PixelFormat& format, const std::uint8_t* row, std::size_t width,
               const CGFloat* decode, std::uint32_t* pixels);
/// Converts one row of cairo's pixels to the memory of a context of that format. Bytes that the
/// format skips are not changed.
void packRow(const PixelFormat& format, const std::uint32_t* pixels, std::size_t width,
             std::uint8_t* row);

}  // namespace host
