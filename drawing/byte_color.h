// A colour in bytes.
#pragma once

#include <cstdint>
#include <string>

namespace varnix::drawing {

/// Straight alpha.
struct ByteColor {
  std::uint8_t red = 0, green = 0, blue = 0, alpha = 255;

  bool operator==(const ByteColor&) const = default;
};

/// "#rrggbbaa".
std::string hex(const ByteColor& color);

/// What is seen of a colour that may be translucent, on an opaque one.
ByteColor laidOn(const ByteColor& ground, const ByteColor& color);

/// How well the two are told apart, 1 to 21: the contrast ratio of the WCAG. Both are
/// opaque.
double contrastRatio(const ByteColor& a, const ByteColor& b);

}  // namespace varnix::drawing
