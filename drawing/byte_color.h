// A colour in bytes.
#pragma once

#include <cstdint>
#include <string>

#include "drawing/color.h"

namespace varnix::drawing {

/// With straight alpha.
struct ByteColor {
  std::uint8_t red = 0, green = 0, blue = 0, alpha = 255;

  /// For drawing with it.
  constexpr operator Color() const {
    return {red / 255.0, green / 255.0, blue / 255.0, alpha / 255.0};
  }
  bool operator==(const ByteColor&) const = default;
};

/// "#rrggbbaa".
std::string hex(const ByteColor& color);

/// How a colour, which may be translucent, looks on an opaque one.
ByteColor laidOn(const ByteColor& ground, const ByteColor& color);

/// The contrast ratio of the WCAG, 1 to 21. Both are opaque.
double contrastRatio(const ByteColor& a, const ByteColor& b);

}  // namespace varnix::drawing
