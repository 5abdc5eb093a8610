#include "drawing/ink.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

namespace varnix::drawing {

namespace {

constexpr double kSide = 4;  ///< of a place, in points
constexpr double kLeastShare = 1.0 / 8;
constexpr double kLeastCoverage = 0.5;
constexpr int kBesideStep = 3;

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

const std::uint32_t* rowOf(cairo_surface_t* surface, int y) {
  return reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface) +
                                                static_cast<std::ptrdiff_t>(y) *
                                                    cairo_image_surface_get_stride(surface));
}

Place placeOf(const Sums& sums, const Box& box, const Box& mark, InkKind kind) {
  return {box, mark, kind, sums.contrast(), sums.mean(sums.ink), sums.mean(sums.ground)};
}

}  // namespace

std::vector<Reading> Inks::readings(const Canvas& canvas) const {
  cairo_surface_flush(canvas.surface().get());
  const int side = std::max(static_cast<int>(std::lround(kSide * canvas.scale())), 1);
  const auto least = static_cast<std::size_t>(std::ceil(side * side * kLeastShare));
  auto isThere = [&](const Pixel& pixel) {
    return (rowOf(canvas.surface().get(), pixel.y)[pixel.x] & 0xffffff) == pixel.laid;
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

Ink::Ink(const Canvas& canvas, const Box& box, const Color& color, InkKind kind)
    : canvas_(canvas), color_(color), kind_(kind) {
  const Inks* inks = canvas.inks();
  isNoted_ = inks != nullptr && !inks->isInactive_ && color.alpha > 0 &&
             (color.dyes != nullptr || !inks->below_.empty());
  if (!isNoted_) return;
  canvas.save();
  cairo_t* cr = canvas.context();
  cairo_new_path(cr);
  const Box more = box.inset(-1);
  cairo_rectangle(cr, more.x, more.y, more.width, more.height);
  cairo_clip(cr);
  cairo_push_group_with_content(cr, CAIRO_CONTENT_COLOR_ALPHA);
}

Ink::~Ink() {
  if (!isNoted_) return;
  cairo_t* cr = canvas_.context();
  const std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)> drawn(
      cairo_pop_group(cr), &cairo_pattern_destroy);
  cairo_surface_t *group = nullptr, *target = canvas_.surface().get();
  if (cairo_pattern_get_surface(drawn.get(), &group) != CAIRO_STATUS_SUCCESS) group = nullptr;
  Inks::Noted noted{canvas_.inks()->below_, color_, kind_, {}, {}};
  if (color_.dyes != nullptr) noted.surfaces.push_back(color_.dyes);
  if (group != nullptr && cairo_surface_get_type(group) == CAIRO_SURFACE_TYPE_IMAGE) {
    double left = 0, top = 0;
    cairo_surface_get_device_offset(group, &left, &top);
    cairo_surface_flush(group);
    cairo_surface_flush(target);
    const int x0 = -static_cast<int>(std::lround(left)), y0 = -static_cast<int>(std::lround(top));
    const double least = 255 * color_.alpha * kLeastCoverage;
    for (int y = 0; y < cairo_image_surface_get_height(group); ++y) {
      const int to = y0 + y;
      if (to < 0 || to >= cairo_image_surface_get_height(target)) continue;
      const std::uint32_t *ink = rowOf(group, y), *ground = rowOf(target, to);
      for (int x = 0; x < cairo_image_surface_get_width(group); ++x) {
        const int at = x0 + x;
        if (at < 0 || at >= cairo_image_surface_get_width(target)) continue;
        const Inks::Pixel pixel{at, to, ground[at] & 0xffffff, ground[at] & 0xffffff};
        if (ink[x] >> 24 >= least) noted.pixels.push_back(pixel);
        else if (ink[x] == 0 && (x + y) % kBesideStep == 0) noted.beside.push_back(pixel);
      }
    }
  }
  cairo_set_source(cr, drawn.get());
  cairo_paint(cr);
  cairo_surface_flush(target);
  for (Inks::Pixel& pixel : noted.pixels) pixel.laid = rowOf(target, pixel.y)[pixel.x] & 0xffffff;
  canvas_.restore();
  canvas_.inks()->noted_.push_back(std::move(noted));
}

On::On(const Canvas& canvas, const char* surface) : inks_(canvas.inks()) {
  if (inks_ != nullptr) inks_->below_.push_back(surface);
}

On::~On() {
  if (inks_ != nullptr) inks_->below_.pop_back();
}

Inactive::Inactive(const Canvas& canvas) : inks_(canvas.inks()) {
  if (inks_ != nullptr) inks_->isInactive_ = true;
}

Inactive::~Inactive() {
  if (inks_ != nullptr) inks_->isInactive_ = false;
}

}  // namespace varnix::drawing
