#include "pick/heat_map.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "picker/frame_size.h"

namespace varnix::cli::pick {

namespace {

/// Even steps of lightness, so that equal differences look equal.
const std::vector<Color> kShades = {{240, 244, 252}, {201, 217, 243}, {153, 186, 229},
                                    {101, 149, 208}, {58, 110, 178},  {33, 72, 138},
                                    {20, 38, 86}};

Color shadeOf(double part) {
  const double place = part * static_cast<double>(kShades.size() - 1);
  const auto index = std::min(static_cast<std::size_t>(place), kShades.size() - 2);
  const Color& from = kShades[index];
  const Color& to = kShades[index + 1];
  auto mixed = [&](std::uint8_t a, std::uint8_t b) {
    return static_cast<std::uint8_t>(
        std::lround(std::lerp(a, b, place - static_cast<double>(index))));
  };
  return {mixed(from.red, to.red), mixed(from.green, to.green), mixed(from.blue, to.blue)};
}

void markFirst(const Canvas& canvas, const Analysis& image, const Box& box, const Color& color) {
  const auto found = std::ranges::find(image.frame, color, &CountedColor::color);
  if (found == image.frame.end()) return;
  const auto index = static_cast<int>(found - image.frame.begin());
  const double cell = box.width / kProccesedWidth;
  const double x = box.x + (index % kProccesedWidth + 0.5) * cell;
  const double y = box.y + (index / kProccesedWidth + 0.5) * cell;
  constexpr Color kRing{20, 24, 40, 90};
  canvas.disc({x, y}, 6, kRing);
  canvas.disc({x, y}, 5.5, kPaper);
  canvas.disc({x, y}, 4, color);
}

void drawLegend(const Canvas& canvas, double x, double y, double width, int greatest) {
  const std::string most = std::to_string(greatest);
  const double number = 24;
  drawText(canvas, {x, y + 9}, "0", kCaption);
  const Box bar{x + 16, y + 1, width - 16 - number - 4, 8};
  canvas.rectangle(bar, 4);
  canvas.fillGradient({bar.x, 0}, {bar.right(), 0}, {std::begin(kShades), std::end(kShades)});
  drawText(canvas, {x + width, y + 9}, most, kCaption.with(Align::right));
}

}  // namespace

void drawHeatMap(const Canvas& canvas, const Analysis& image, const Box& box) {
  const int greatest = std::ranges::max(image.frame, {}, &CountedColor::count).count;
  const double cell = box.width / kProccesedWidth;
  canvas.saveWithin(box, kRadius);
  for (std::size_t i = 0; i < image.frame.size(); ++i) {
    const auto x = static_cast<double>(i % kProccesedWidth);
    const auto y = static_cast<double>(i / kProccesedWidth);
    const double part = greatest == 0 ? 0 : static_cast<double>(image.frame[i].count) / greatest;
    canvas.fill({box.x + x * cell, box.y + y * cell, cell, cell}, shadeOf(part));
  }
  canvas.restore();
  canvas.outline(box, kEdge, kLine, kRadius);
  for (const Color& color : {image.secondary, image.primary, image.background}) {
    markFirst(canvas, image, box, color);
  }
  drawLegend(canvas, box.x, box.y + box.height + 12, box.width, greatest);
}

}  // namespace varnix::cli::pick
