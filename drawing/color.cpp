#include "drawing/color.h"

#include <algorithm>
#include <charconv>

namespace varnix::drawing {

std::optional<Color> parseColor(std::string_view text) {
  if (text.size() != 9 || text[0] != '#') return {};
  std::array<double, 4> parts{};
  for (std::size_t i = 0; i < parts.size(); ++i) {
    unsigned byte = 0;
    const char* from = text.data() + 1 + 2 * i;
    const auto [end, error] = std::from_chars(from, from + 2, byte, 16);
    if (error != std::errc() || end != from + 2) return {};
    parts[i] = byte / 255.0;
  }
  return Color{parts[0], parts[1], parts[2], parts[3]};
}

Color over(const Color& top, const Color& below) {
  auto mix = [&](double a, double b) { return a * top.alpha + b * (1 - top.alpha); };
  return {mix(top.red, below.red), mix(top.green, below.green), mix(top.blue, below.blue),
          below.alpha};
}

Color saturated(const Color& color, double factor) {
  const double grey = luma(color);
  auto moved = [&](double part) { return std::clamp(grey + factor * (part - grey), 0.0, 1.0); };
  return {moved(color.red), moved(color.green), moved(color.blue), color.alpha};
}

}  // namespace varnix::drawing
