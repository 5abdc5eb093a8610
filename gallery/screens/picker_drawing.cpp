#include "gallery/screens/picker_drawing.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>

#include "drawing/hex.h"
#include "drawing/text.h"
#include "gallery/screens/controls.h"

namespace varnix::screens {

namespace {

constexpr double kCardWidth = 300, kCardHeight = 348, kCardRadius = 10;
constexpr double kRing = 124, kRingWidth = 26;
constexpr double kField = 128;

struct Hsb {
  double hue, saturation, brightness;  ///< each from 0 to 1
};

Hsb hsbOf(const Color& color) {
  const double most = std::max({color.red, color.green, color.blue});
  const double range = most - std::min({color.red, color.green, color.blue});
  if (range <= 0) return {0, 0, most};
  double sixths = 0;
  if (most == color.red) sixths = (color.green - color.blue) / range;
  else if (most == color.green) sixths = (color.blue - color.red) / range + 2;
  else sixths = (color.red - color.green) / range + 4;
  return {(sixths < 0 ? sixths + 6 : sixths) / 6, range / most, most};
}

/// Of full saturation and brightness.
Color pure(double hue) {
  auto part = [hue](double shift) {
    const double at = std::fmod(hue * 6 + shift, 6.0);
    return std::clamp(std::min(at, 4 - at), 0.0, 1.0);
  };
  return {part(2), part(0), part(4)};
}

void drawRing(const Canvas& canvas, Point middle) {
  constexpr int kSteps = 360;
  cairo_t* cr = canvas.context();
  canvas.save();
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
  for (int i = 0; i < kSteps; ++i) {
    const double from = i * kTurn / kSteps;
    cairo_new_path(cr);
    // Each covers the edge of the one before.
    cairo_arc(cr, middle.x, middle.y, kRing - kRingWidth / 2, from, from + 1.6 * kTurn / kSteps);
    canvas.use(pure(static_cast<double>(i) / kSteps));
    cairo_set_line_width(cr, kRingWidth);
    cairo_stroke(cr);
  }
  canvas.restore();
}

/// Fills a box with a colour that fades to another, across or down.
void fillFading(const Canvas& canvas, const Box& box, const Color& from, const Color& to,
                bool isDown) {
  const std::unique_ptr<cairo_pattern_t, decltype(&cairo_pattern_destroy)> fade(
      cairo_pattern_create_linear(box.x, box.y, isDown ? box.x : box.right(),
                                  isDown ? box.bottom() : box.y),
      &cairo_pattern_destroy);
  cairo_pattern_add_color_stop_rgba(fade.get(), 0, from.red, from.green, from.blue, from.alpha);
  cairo_pattern_add_color_stop_rgba(fade.get(), 1, to.red, to.green, to.blue, to.alpha);
  canvas.rectangle(box);
  cairo_set_source(canvas.context(), fade.get());
  cairo_fill(canvas.context());
}

/// A ring that can be seen on any colour.
void drawMark(const Canvas& canvas, Point at, const Color& color) {
  canvas.disc(at, 10, kBlack.withAlpha(0.25));
  canvas.disc(at, 9.5, kWhite);
  canvas.disc(at, 7, color);
}

}  // namespace

void drawPicker(const Canvas& canvas, const Color& color) {
  canvas.fill({0, 0, canvas.width(), canvas.height()}, kBlack.withAlpha(0.4));
  const Box card = around({canvas.width() / 2, canvas.height() / 2}, kCardWidth, kCardHeight);
  canvas.fill(card, kWhite, kCardRadius);
  const Point middle{card.middleX(), card.y + kCardWidth / 2};
  const Hsb chosen = hsbOf(color);
  drawRing(canvas, middle);
  const Box field = around(middle, kField, kField);
  fillFading(canvas, field, kWhite, pure(chosen.hue), false);
  fillFading(canvas, field, kBlack.withAlpha(0), kBlack, true);
  const double angle = chosen.hue * kTurn, radius = kRing - kRingWidth / 2;
  drawMark(canvas, {middle.x + radius * std::cos(angle), middle.y + radius * std::sin(angle)},
           pure(chosen.hue));
  drawMark(
      canvas,
      {field.x + chosen.saturation * field.width, field.y + (1 - chosen.brightness) * field.height},
      color.withAlpha(1));
  auto byte = [](double part) { return static_cast<std::uint8_t>(part * 255 + 0.5); };
  const double line = card.bottom() - 30;
  canvas.disc({card.x + 40, line}, 14.5, rgb(0xd1d1d6));
  canvas.disc({card.x + 40, line}, 12.5, color.withAlpha(1));
  drawCentered(canvas, {card.x + 64, line},
               drawing::hex(byte(color.red), byte(color.green), byte(color.blue)), {17});
}

}  // namespace varnix::screens
