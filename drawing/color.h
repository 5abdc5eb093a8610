// Colours for drawing screens.
#pragma once

#include <array>
#include <optional>
#include <string_view>

namespace varnix::drawing {

/// Components from 0 to 1, with straight alpha.
struct Color {
  double red = 0, green = 0, blue = 0, alpha = 1;
  /// The surface that is dyed in it, "CLASS PROPERTY", for whoever notes what is drawn (ink.h);
  /// null for the platform's own colours.
  const char* dyes = nullptr;

  constexpr Color withAlpha(double value) const { return {red, green, blue, value, dyes}; }
  /// Whether they look the same.
  constexpr bool operator==(const Color& other) const {
    return red == other.red && green == other.green && blue == other.blue && alpha == other.alpha;
  }
};

/// From 0xRRGGBB.
constexpr Color rgb(unsigned value, double alpha = 1) {
  auto part = [value](int shift) { return (value >> shift & 0xff) / 255.0; };
  return {part(16), part(8), part(0), alpha};
}

inline constexpr Color kBlack = rgb(0x000000);
inline constexpr Color kWhite = rgb(0xffffff);

/// From "#rrggbbaa"; nothing for anything else.
std::optional<Color> parseColor(std::string_view text);

/// The colour on top of an opaque one.
Color over(const Color& top, const Color& below);

/// How bright a colour looks, from 0 to 1: Rec. 709 weights, applied to the components as they are.
constexpr double luma(const Color& color) {
  return 0.2126 * color.red + 0.7152 * color.green + 0.0722 * color.blue;
}

/// The saturation multiplied and the luma kept; components are limited to their range.
Color saturated(const Color& color, double factor);

}  // namespace varnix::drawing
