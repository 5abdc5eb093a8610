#include "gallery/screens/control_glyphs.h"

#include <cmath>
#include <numbers>

#include "gallery/screens/around.h"

namespace varnix::screens {

namespace {

void triangle(const Canvas& canvas, double x, double half, int direction) {
  canvas.line({{x, -half}, {x + direction * 1.62 * half, 0}, {x, half}});
  canvas.close();
}

}  // namespace

void drawAirplane(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  cairo_t* cr = canvas.context();
  // Pointing right: nose, wing, tail, and the same below.
  cairo_new_path(cr);
  cairo_move_to(cr, 15, 0);
  cairo_curve_to(cr, 15, -1.6, 12.5, -2.4, 10, -2.4);
  cairo_line_to(cr, 4.5, -2.4);
  cairo_line_to(cr, -3, -13);
  cairo_line_to(cr, -6.4, -13);
  cairo_line_to(cr, -3, -2.4);
  cairo_line_to(cr, -9, -2.2);
  cairo_line_to(cr, -12, -6);
  cairo_line_to(cr, -14.4, -6);
  cairo_line_to(cr, -12.8, 0);
  cairo_line_to(cr, -14.4, 6);
  cairo_line_to(cr, -12, 6);
  cairo_line_to(cr, -9, 2.2);
  cairo_line_to(cr, -3, 2.4);
  cairo_line_to(cr, -6.4, 13);
  cairo_line_to(cr, -3, 13);
  cairo_line_to(cr, 4.5, 2.4);
  cairo_line_to(cr, 10, 2.4);
  cairo_curve_to(cr, 12.5, 2.4, 15, 1.6, 15, 0);
  canvas.close();
  canvas.fill(color);
}

void drawFan(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, {middle.x, middle.y + 9});
  cairo_t* cr = canvas.context();
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
  cairo_new_path(cr);
  cairo_move_to(cr, 0, 1.5);
  cairo_arc(cr, 0, 1.5, 6, -kTurn * 3 / 8, -kTurn / 8);
  canvas.close();
  canvas.fill(color);
  for (double radius : {10.4, 16.6}) {
    cairo_new_path(cr);
    cairo_arc(cr, 0, 1.5, radius, -kTurn * 3 / 8, -kTurn / 8);
    canvas.stroke(color, 3.5);
  }
}

void drawBluetooth(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.line({{-6.5, -6.5}, {6.5, 6.5}, {0, 13}, {0, -13}, {6.5, -6.5}, {-6.5, 6.5}});
  canvas.stroke(color, 2);
}

void drawMoon(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, {middle.x + 1, middle.y});
  cairo_t* cr = canvas.context();
  // The rest of a disc that another one covers at its upper right.
  cairo_push_group(cr);
  canvas.disc({-1, 1}, 12, color);
  cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
  canvas.circle({4.6, -4.4}, 10.4);
  cairo_fill(cr);
  cairo_pop_group_to_source(cr);
  cairo_paint(cr);
}

void drawRotationLock(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  cairo_t* cr = canvas.context();
  canvas.rectangle({-5.2, -1.3, 10.4, 8.2}, 1.4);
  canvas.fill(color);
  cairo_new_path(cr);
  cairo_move_to(cr, -3.3, -1.3);
  cairo_line_to(cr, -3.3, -3.6);
  cairo_arc(cr, 0, -3.6, 3.3, -kTurn / 2, 0);
  cairo_line_to(cr, 3.3, -1.3);
  canvas.stroke(color, 1.7);
  // Almost a full turn, with the arrowhead at its end.
  constexpr double kRadius = 13.4, kEnd = 0.69 * kTurn;
  cairo_set_line_cap(cr, CAIRO_LINE_CAP_BUTT);
  cairo_new_path(cr);
  cairo_arc(cr, 0, 0, kRadius, -0.22 * kTurn, kEnd);
  canvas.stroke(color, 2.1);
  cairo_rotate(cr, kEnd);
  canvas.line({{kRadius - 4, -0.4}, {kRadius + 4, -0.4}, {kRadius, 5.4}});
  canvas.close();
  canvas.fill(color);
}

void drawTorch(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.rectangle({-6.5, -16, 13, 4}, 1);
  canvas.fill(color);
  canvas.line({{-6.5, -10.6}, {6.5, -10.6}, {4.2, -4}, {4.2, 15}, {-4.2, 15}, {-4.2, -4}});
  canvas.close();
  canvas.fill(color);
  canvas.fill({-1.6, -1, 3.2, 6}, kWhite.withAlpha(0.55), 1.6);
}

void drawTimer(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, {middle.x, middle.y + 1});
  cairo_t* cr = canvas.context();
  cairo_new_path(cr);
  cairo_arc(cr, 0, 0, 13.5, -kTurn / 4, kTurn * 0.625);
  canvas.stroke(color, 2.4);
  canvas.line({{0, -13.5}, {0, -8.5}});
  canvas.stroke(color, 2.4);
  canvas.disc({0, 0}, 2.6, color);
  canvas.line({{-7.5, -7.5}, {0, 0}});
  canvas.stroke(color, 2.2);
}

void drawCalculator(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  const Box frame{-10.5, -15, 21, 30};
  canvas.outline(frame, color, 2.2, 4);
  canvas.fill({-6, -10.4, 12, 5.4}, color, 1);
  for (int row = 0; row < 3; ++row) {
    for (int column = 0; column < 3; ++column)
      canvas.disc({-4.8 + 4.8 * column, -0.6 + 5 * row}, 1.5, color);
  }
}

void drawSmallCamera(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  cairo_t* cr = canvas.context();
  cairo_push_group(cr);
  canvas.rectangle({-15, -8, 30, 20}, 3.5);
  canvas.fill(color);
  canvas.line({{-6.5, -8}, {-4, -12}, {4, -12}, {6.5, -8}});
  canvas.close();
  canvas.fill(color);
  cairo_set_operator(cr, CAIRO_OPERATOR_CLEAR);
  canvas.circle({0, 1.8}, 7);
  cairo_fill(cr);
  cairo_set_operator(cr, CAIRO_OPERATOR_SOURCE);
  canvas.disc({0, 1.8}, 5, color);
  cairo_pop_group_to_source(cr);
  cairo_paint(cr);
}

void drawSun(const Canvas& canvas, Point middle, double radius, const Color& color) {
  const Around around(canvas, middle);
  canvas.disc({0, 0}, radius, color);
  for (int i = 0; i < 8; ++i) {
    const double angle = kTurn * i / 8;
    const double from = radius * 1.55, to = radius * 2.1;
    canvas.line({{from * std::cos(angle), from * std::sin(angle)},
                 {to * std::cos(angle), to * std::sin(angle)}});
  }
  canvas.stroke(color, 0.32 * radius);
}

void drawPlay(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  triangle(canvas, -9, 12, 1);
  canvas.fill(color);
}

void drawPause(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  for (double x : {-8.5, 2.5}) canvas.fill({x, -11.5, 6, 23}, color, 0.8);
}

void drawSkip(const Canvas& canvas, Point middle, int direction, const Color& color) {
  const Around around(canvas, middle);
  triangle(canvas, direction * -14.0, 8.8, direction);
  triangle(canvas, 0, 8.8, direction);
  canvas.fill(color);
}

void drawScreenSharing(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.line({{-4, 4}, {-9, 4}, {-9, -7}, {9, -7}, {9, 4}, {4, 4}});
  canvas.stroke(color, 1.4);
  canvas.line({{0, 1}, {5.5, 7.5}, {-5.5, 7.5}});
  canvas.close();
  canvas.fill(color);
}

void drawDrop(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, {middle.x, middle.y + 1});
  cairo_t* cr = canvas.context();
  canvas.disc({0, 0}, 1.6, color);
  for (double radius : {4.2, 7.0, 9.8}) {
    cairo_new_path(cr);
    cairo_arc(cr, 0, 0, radius, kTurn * 0.36, kTurn * 1.14);
    canvas.stroke(color, 1.3);
  }
  canvas.line({{0, 3}, {4, 9}, {-4, 9}});
  canvas.close();
  canvas.fill(color);
}

void drawLoudspeaker(const Canvas& canvas, Point left, int waves, const Color& color,
                     double scale) {
  const Around around(canvas, left);
  cairo_t* cr = canvas.context();
  cairo_scale(cr, scale, scale);
  canvas.line({{0, -2.2}, {2.6, -2.2}, {6.4, -5.6}, {6.4, 5.6}, {2.6, 2.2}, {0, 2.2}});
  canvas.close();
  canvas.fill(color);
  for (int i = 1; i <= waves; ++i) {
    cairo_new_path(cr);
    cairo_arc(cr, 5.6, 0, 1.2 + 2.9 * i, -0.82, 0.82);
    canvas.stroke(color, 1.25);
  }
}

}  // namespace varnix::screens
