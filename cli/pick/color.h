// A colour in bytes.
#pragma once

#include <cstdint>
#include <string>

namespace varnix::cli::pick {

/// Straight alpha.
struct Color {
  std::uint8_t red = 0, green = 0, blue = 0, alpha = 255;

  bool operator==(const Color&) const = default;
};

/// "#rrggbbaa".
std::string hex(const Color& color);

/// What is seen of a colour that may be translucent, on an opaque one.
Color laidOn(const Color& ground, const Color& color);

/// How well the two are told apart, 1 to 21: the contrast ratio of the WCAG. Both are
/// opaque.
double contrastRatio(const Color& a, const Color& b);

}  // namespace varnix::cli::pick
