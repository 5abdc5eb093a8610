#include "gallery/screens/status_bar.h"

#include <numbers>

#include "drawing/ink.h"
#include "drawing/text.h"

namespace varnix::screens {

namespace {

constexpr double kMiddle = kStatusBarHeight / 2;

void drawSignal(const Canvas& canvas, const Color& color) {
  constexpr int kDots = 5, kStrength = 4;
  constexpr double kDiameter = 5.5, kStep = 7;
  const Ink ink(canvas, {4, 0, kDots * kStep + 5, kStatusBarHeight}, color, InkKind::symbol);
  for (int i = 0; i < kDots; ++i) {
    const Point middle{6.5 + kDiameter / 2 + i * kStep, kMiddle};
    if (i < kStrength) {
      canvas.disc(middle, kDiameter / 2, color);
      continue;
    }
    canvas.circle(middle, kDiameter / 2 - 0.25);
    canvas.stroke(color, 0.5);
  }
}

/// Three quarter-circle arcs above a point.
void drawWifi(const Canvas& canvas, double x, const Color& color) {
  constexpr double kReach = 9, kEighth = kTurn / 8;
  const Point foot{x + 6.2, kMiddle + 4.6};
  const Ink ink(canvas, {x - 4, 0, 21, kStatusBarHeight}, color, InkKind::symbol);
  cairo_t* cr = canvas.context();
  canvas.save();
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
  cairo_move_to(cr, foot.x, foot.y);
  cairo_arc(cr, foot.x, foot.y, kReach / 3 - 0.1, -3 * kEighth, -kEighth);
  canvas.close();
  canvas.fill(color);
  for (double radius : {4.7, 7.9}) {
    cairo_new_path(cr);
    cairo_arc(cr, foot.x, foot.y, radius, -3 * kEighth, -kEighth);
    canvas.stroke(color, 1.9);
  }
  canvas.restore();
}

void drawBattery(const Canvas& canvas, const Color& color) {
  constexpr double kCharge = 0.82;
  const Box shell{343.5, kMiddle - 4.75, 24, 9.5};
  const Ink ink(canvas, {shell.x - 1, 0, shell.width + 6, kStatusBarHeight}, color,
                InkKind::symbol);
  canvas.outline(shell, color, 0.5, 1.5);
  const Box inside = shell.inset(1);
  canvas.fill({inside.x, inside.y, inside.width * kCharge, inside.height}, color, 0.75);
  canvas.save();
  canvas.rectangle({shell.right() + 0.8, 0, 3, kStatusBarHeight});
  canvas.clip();
  canvas.disc({shell.right() + 0.4, kMiddle}, 1.8, color);
  canvas.restore();
}

}  // namespace

void drawStatusBar(const Canvas& canvas, const Color& foreground) {
  const TextStyle plain{12, foreground};
  drawSignal(canvas, foreground);
  const std::string carrier = "Varnix";
  drawCentered(canvas, {45.5, kMiddle}, carrier, plain);
  drawWifi(canvas, 45.5 + textWidth(canvas, carrier, plain) + 5, foreground);
  drawCentered(canvas, {canvas.width() / 2, kMiddle}, "9:41 AM",
               plain.with(Weight::semibold).with(Align::center));
  drawCentered(canvas, {340, kMiddle}, "82%", plain.with(Align::right));
  drawBattery(canvas, foreground);
}

}  // namespace varnix::screens
