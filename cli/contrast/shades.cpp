#include "contrast/shades.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <utility>

namespace varnix::cli {

namespace {

/// Hue in sixths of the circle; saturation and lightness from 0 to 1.
struct Hsl {
  double hue = 0, saturation = 0, lightness = 0;
};

Hsl hslOf(const drawing::ByteColor& color) {
  const double red = color.red / 255.0, green = color.green / 255.0, blue = color.blue / 255.0;
  const auto [least, most] = std::minmax({red, green, blue});
  const double chroma = most - least;
  Hsl result{0, 0, (most + least) / 2};
  if (chroma <= 0) return result;
  result.saturation = chroma / (1 - std::abs(2 * result.lightness - 1));
  if (most <= red) {
    result.hue = (green - blue) / chroma;
  } else if (most <= green) {
    result.hue = 2 + (blue - red) / chroma;
  } else {
    result.hue = 4 + (red - green) / chroma;
  }
  if (result.hue < 0) result.hue += 6;
  return result;
}

drawing::ByteColor colorOf(const Hsl& hsl) {
  const double half = hsl.saturation * (1 - std::abs(2 * hsl.lightness - 1)) / 2;
  // A channel is full for two sixths of the circle, around its own hue; it takes one sixth each to
  // rise and to fall.
  auto channel = [&](double middle) {
    double distance = std::abs(hsl.hue - middle);
    distance = std::min(distance, 6 - distance);
    const double share = std::clamp(2 - distance, 0.0, 1.0);
    return static_cast<std::uint8_t>(std::lround((hsl.lightness + half * (2 * share - 1)) * 255));
  };
  return {channel(0), channel(2), channel(4)};
}

}  // namespace

std::optional<drawing::ByteColor> plainColor(std::string_view value) {
  value = value.substr(0, value.find(':'));
  if (value.starts_with('#')) value.remove_prefix(1);
  std::string digits(value);
  if (digits.size() == 3) {
    digits.clear();
    for (const char digit : value) digits.append(2, digit);
  }
  unsigned whole = 0;
  const char* end = digits.data() + digits.size();
  const auto [last, error] = std::from_chars(digits.data(), end, whole, 16);
  if (digits.size() != 6 || error != std::errc{} || last != end || digits.front() == '-') return {};
  auto byte = [whole](int shift) { return static_cast<std::uint8_t>(whole >> shift & 0xff); };
  return drawing::ByteColor{byte(16), byte(8), byte(0)};
}

std::vector<drawing::ByteColor> shadesOf(const drawing::ByteColor& color) {
  constexpr int kSteps = 25;
  const Hsl from = hslOf(color);
  std::vector<double> lightnesses;
  for (int i = 0; i <= kSteps; ++i) lightnesses.push_back(static_cast<double>(i) / kSteps);
  std::ranges::sort(lightnesses, {}, [&](double lightness) {
    return std::pair(std::abs(lightness - from.lightness), lightness);
  });
  std::vector<drawing::ByteColor> shades;
  for (const double lightness : lightnesses) {
    const drawing::ByteColor shade = colorOf({from.hue, from.saturation, lightness});
    if (shade != color && std::ranges::find(shades, shade) == shades.end()) shades.push_back(shade);
  }
  return shades;
}

}  // namespace varnix::cli
