// Where what was noted can be read worst.
#include "drawing/ink.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <utility>

#include "drawing/pixel_row.h"

namespace varnix::drawing {

namespace {

constexpr double kSide = 4;  ///< of a place, in points
constexpr double kLeastShare = 1.0 / 8;

using Channels = std::array<double, 3>;

/// A byte's share of the light.
double linear(int byte) {
  static const std::array<double, 256> table = [] {
    std::array<double, 256> made{};
    for (std::size_t i = 0; i < made.size(); ++i) {
      const double value = static_cast<double>(i) / 255;
      made[i] = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
    }
    return made;
  }();
  return table[static_cast<std::size_t>(byte)];
}

double luminance(const Channels& bytes) {
  auto part = [&](std::size_t i) { return linear(static_cast<int>(std::lround(bytes[i]))); };
  return 0.2126 * part(0) + 0.7152 * part(1) + 0.0722 * part(2);
}

Channels channelsOf(std::uint32_t pixel) {
  auto byte = [&](int shift) { return static_cast<double>(pixel >> shift & 0xff); };
  return {byte(16), byte(8), byte(0)};
}

Channels laidOn(const Channels& ground, const Color& color) {
  const Channels own{color.red * 255, color.green * 255, color.blue * 255};
  Channels mixed{};
  for (std::size_t i = 0; i < mixed.size(); ++i)
    mixed[i] = std::lerp(ground[i], own[i], color.alpha);
  return mixed;
}

/// Sums over the pixels of a place.
struct Sums {
  std::size_t count = 0;
  double inkLight = 0, groundLight = 0;
  Channels ink{}, ground{};

  void add(std::uint32_t below, const Color& color) {
    const Channels under = channelsOf(below), over = laidOn(under, color);
    ++count;
    inkLight += luminance(over);
    groundLight += luminance(under);
    for (std::size_t i = 0; i < ink.size(); ++i) {
      ink[i] += over[i];
      ground[i] += under[i];
    }
  }
  double contrast() const {
    const auto [darker, lighter] = std::minmax(inkLight, groundLight);
    const double all = static_cast<double>(count);
    return (lighter / all + 0.05) / (darker / all + 0.05);
  }
  Color mean(const Channels& sums) const {
    const double all = 255 * static_cast<double>(count);
    return {sums[0] / all, sums[1] / all, sums[2] / all};
  }
};

struct Extremes {
  int left, top, right, bottom;  ///< the last ones not included

  void take(int x, int y) {
    left = std::min(left, x);
    top = std::min(top, y);
    right = std::max(right, x + 1);
    bottom = std::max(bottom, y + 1);
  }
  Box points(double scale) const {
    return {left / scale, top / scale, (right - left) / scale, (bottom - top) / scale};
  }
};

/// Smaller is worse.
double reach(const Place& place) { return place.contrast / neededContrast(place.kind); }

Place placeOf(const Sums& sums, const Box& box, const Box& mark, InkKind kind) {
  return {box, mark, kind, sums.contrast(), sums.mean(sums.ink), sums.mean(sums.ground)};
}

}  // namespace

std::vector<Reading> Inks::readings(const Canvas& canvas) const {
  cairo_surface_flush(canvas.surface().get());
  const int side = std::max(static_cast<int>(std::lround(kSide * canvas.scale())), 1);
  const auto least = static_cast<std::size_t>(std::ceil(side * side * kLeastShare));
  auto isThere = [&](const Pixel& pixel) {
    return (pixelRow(canvas.surface().get(), pixel.y)[pixel.x] & 0xffffff) == pixel.laid;
  };
  std::vector<Reading> all;
  for (const Noted& noted : noted_) {
    // Black that is dimmed stays black; what is beside it does not.
    const auto left = std::ranges::count_if(noted.beside, isThere);
    if (static_cast<std::size_t>(2 * left) < noted.beside.size()) continue;
    std::map<std::pair<int, int>, Sums> squares;
    Sums whole;
    std::optional<Extremes> extremes;
    for (const Pixel& pixel : noted.pixels) {
      if (!isThere(pixel)) continue;
      if (!extremes) extremes = Extremes{pixel.x, pixel.y, pixel.x, pixel.y};
      extremes->take(pixel.x, pixel.y);
      squares[{pixel.y / side, pixel.x / side}].add(pixel.ground, noted.color);
      whole.add(pixel.ground, noted.color);
    }
    if (!extremes) continue;
    const Box mark = extremes->points(canvas.scale());
    std::optional<Place> worst;
    for (const auto& [at, sums] : squares) {
      if (sums.count < least) continue;
      const double step = side / canvas.scale();
      const Place place =
          placeOf(sums, {at.second * step, at.first * step, step, step}, mark, noted.kind);
      if (!worst || reach(place) < reach(*worst)) worst = place;
    }
    if (!worst) worst = placeOf(whole, mark, mark, noted.kind);
    for (const char* surface : noted.surfaces) {
      const auto known = std::find_if(all.begin(), all.end(),
                                      [&](const Reading& one) { return one.surface == surface; });
      if (known == all.end()) all.push_back({surface, *worst});
      else if (reach(*worst) < reach(known->worst)) known->worst = *worst;
    }
  }
  return all;
}

}  // namespace varnix::drawing
