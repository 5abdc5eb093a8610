#include "gallery/page/contrast.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace varnix::cli::gallery {

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

std::optional<drawing::ByteColor> parseColor(std::string_view text) {
  if ((text.size() != 7 && text.size() != 9) || text.front() != '#') return {};
  std::uint8_t channels[4] = {0, 0, 0, 255};
  for (std::size_t i = 0; 2 * i + 1 < text.size(); ++i) {
    const char* from = text.data() + 2 * i + 1;
    const auto [end, error] = std::from_chars(from, from + 2, channels[i], 16);
    if (error != std::errc{} || end != from + 2) return {};
  }
  return drawing::ByteColor{channels[0], channels[1], channels[2], channels[3]};
}

std::optional<drawing::ByteColor> nearestOfHue(const drawing::ByteColor& color,
                                               const drawing::ByteColor& ground, double least) {
  if (drawing::contrastRatio(color, ground) >= least) return color;
  const Hsl from = hslOf(color);
  // Steps smaller than a byte of lightness. Each colour is rounded to bytes before it is tried,
  // since bytes are what is shown.
  constexpr int kSteps = 1020;
  for (int i = 1; i <= kSteps; ++i) {
    const double step = static_cast<double>(i) / kSteps;
    for (const double lightness : {from.lightness - step, from.lightness + step}) {
      if (lightness < -1.0 / kSteps || lightness > 1 + 1.0 / kSteps) continue;
      const drawing::ByteColor tried =
          colorOf({from.hue, from.saturation, std::clamp(lightness, 0.0, 1.0)});
      if (drawing::contrastRatio(tried, ground) >= least) return tried;
    }
  }
  return {};
}

}  // namespace varnix::cli::gallery
