#include "gallery/screens/glyphs.h"

#include <numbers>

#include "gallery/screens/around.h"

namespace varnix::screens {

namespace {

void arc(const Canvas& canvas, Point middle, double radius, double from, double to) {
  cairo_new_sub_path(canvas.context());
  cairo_arc(canvas.context(), middle.x, middle.y, radius, from * kTurn, to * kTurn);
}

void noteHead(const Canvas& canvas, Point middle) {
  canvas.save();
  cairo_translate(canvas.context(), middle.x, middle.y);
  cairo_rotate(canvas.context(), -0.3);
  cairo_scale(canvas.context(), 1.3, 1);
  canvas.circle({0, 0}, 2.9);
  canvas.restore();
}

void heart(const Canvas& canvas) {
  cairo_t* cr = canvas.context();
  cairo_move_to(cr, 0, 9.5);
  cairo_curve_to(cr, -16, -1, -10, -10, -5, -9.4);
  cairo_curve_to(cr, -2, -9, -0.6, -7, 0, -5.6);
  cairo_curve_to(cr, 0.6, -7, 2, -9, 5, -9.4);
  cairo_curve_to(cr, 10, -10, 16, -1, 0, 9.5);
}

}  // namespace

void drawNote(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.line({{-4, -8.2}, {8, -10.8}, {8, -6.4}, {-4, -3.8}});
  canvas.close();
  canvas.fill(color);
  canvas.line({{-3.2, -7}, {-3.2, 7}});
  canvas.line({{7.2, -9}, {7.2, 5}});
  canvas.stroke(color, 1.6);
  noteHead(canvas, {-6, 8});
  noteHead(canvas, {4.4, 6});
  canvas.fill(color);
}

void drawPlaylists(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  for (double y : {-7.0, -1.0, 5.0}) canvas.line({{-11, y}, {y > 0 ? -2.0 : 3.0, y}});
  canvas.stroke(color, 1.5);
  canvas.line({{10, -9}, {10, 6}});
  canvas.line({{10, -9}, {5.5, -8}});
  canvas.stroke(color, 1.6);
  noteHead(canvas, {6.9, 7.2});
  canvas.fill(color);
}

void drawMicrophone(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.save();
  cairo_rotate(canvas.context(), kTurn / 8);
  canvas.circle({0, -7.6}, 4.4);
  canvas.fill(color);
  canvas.line({{-3.2, -1.8}, {3.2, -1.8}, {1.6, 11.5}, {-1.6, 11.5}});
  canvas.close();
  canvas.stroke(color, 1.3);
  canvas.restore();
}

void drawBroadcast(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.disc({0, 0}, 2.6, color);
  for (double radius : {6.4, 10.4}) {
    arc(canvas, {0, 0}, radius, -0.14, 0.14);
    arc(canvas, {0, 0}, radius, 0.36, 0.64);
  }
  canvas.stroke(color, 1.5);
}

void drawMore(const Canvas& canvas, Point middle, const Color& color) {
  for (int i = -1; i <= 1; ++i) {
    canvas.circle({middle.x + i * 8, middle.y}, 2.5);
    canvas.fill(color);
  }
}

void drawHouse(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.line({{-11, 0.5}, {0, -10}, {11, 0.5}});
  canvas.line(
      {{-8, -1}, {-8, 9.5}, {-2.6, 9.5}, {-2.6, 2.5}, {2.6, 2.5}, {2.6, 9.5}, {8, 9.5}, {8, -1}});
  canvas.stroke(color, 1.5);
}

void drawMagnifier(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.circle({-2, -2}, 7);
  canvas.line({{3.2, 3.2}, {9.5, 9.5}});
  canvas.stroke(color, 1.6);
}

void drawBell(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  cairo_t* cr = canvas.context();
  cairo_move_to(cr, -9.5, 6.5);
  cairo_curve_to(cr, -5.5, 3, -7.5, -9.5, 0, -9.5);
  cairo_curve_to(cr, 7.5, -9.5, 5.5, 3, 9.5, 6.5);
  canvas.close();
  canvas.stroke(color, 1.5);
  arc(canvas, {0, 7.2}, 3, 0, 0.5);
  canvas.stroke(color, 1.5);
}

void drawEnvelope(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.rectangle({-11, -8, 22, 16}, 2.5);
  canvas.line({{-10, -6.5}, {0, 2}, {10, -6.5}});
  canvas.stroke(color, 1.5);
}

void drawPerson(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.circle({0, -4.5}, 5);
  canvas.stroke(color, 1.5);
  cairo_t* cr = canvas.context();
  cairo_move_to(cr, -10, 10.5);
  cairo_curve_to(cr, -9.5, 0.8, 9.5, 0.8, 10, 10.5);
  canvas.close();
  canvas.stroke(color, 1.5);
}

void drawHeart(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  heart(canvas);
  canvas.stroke(color, 1.6);
}

void drawFullHeart(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  heart(canvas);
  canvas.fill(color);
}

void drawCamera(const Canvas& canvas, Point middle, const Color& color) {
  const Around around(canvas, middle);
  canvas.rectangle({-11, -6.5, 22, 15}, 3);
  canvas.stroke(color, 1.5);
  canvas.line({{-4.5, -6.5}, {-3, -9.5}, {3, -9.5}, {4.5, -6.5}});
  canvas.stroke(color, 1.5);
  canvas.circle({0, 0.8}, 4.6);
  canvas.stroke(color, 1.5);
}

}  // namespace varnix::screens
