#include "drawing/byte_color.h"

#include <algorithm>
#include <cmath>

#include "drawing/hex.h"

namespace varnix::drawing {

namespace {

double linear(std::uint8_t channel) {
  const double value = channel / 255.0;
  return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const ByteColor& color) {
  return 0.2126 * linear(color.red) + 0.7152 * linear(color.green) + 0.0722 * linear(color.blue);
}

}  // namespace

std::string hex(const ByteColor& color) {
  return hex(color.red, color.green, color.blue, color.alpha);
}

ByteColor laidOn(const ByteColor& ground, const ByteColor& color) {
  auto mixed = [&](std::uint8_t below, std::uint8_t above) {
    return static_cast<std::uint8_t>(std::lround(std::lerp(below, above, color.alpha / 255.0)));
  };
  return {mixed(ground.red, color.red), mixed(ground.green, color.green),
          mixed(ground.blue, color.blue)};
}

double contrastRatio(const ByteColor& a, const ByteColor& b) {
  const auto [darker, lighter] = std::minmax({luminance(a), luminance(b)});
  return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace varnix::drawing
