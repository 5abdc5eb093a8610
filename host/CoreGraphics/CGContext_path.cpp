// Paths: their points, and what becomes of them.
#include <cmath>

#include "CoreGraphics/drawing.h"

namespace {

struct Vector {
  double x, y;
  double length() const { return std::hypot(x, y); }
  Vector unit() const { return {x / length(), y / length()}; }
};

Vector operator-(Vector a, Vector b) { return {a.x - b.x, a.y - b.y}; }
Vector operator+(Vector a, Vector b) { return {a.x + b.x, a.y + b.y}; }
Vector operator*(Vector a, double factor) { return {a.x * factor, a.y * factor}; }
double cross(Vector a, Vector b) { return a.x * b.y - a.y * b.x; }

/// A line to where the circle touches the first side of the corner, and its arc to where it touches
/// the second.
void roundCorner(cairo_t* cairo, Vector corner, Vector end, double radius) {
  Vector from{};
  cairo_get_current_point(cairo, &from.x, &from.y);
  const Vector back = from - corner;
  const Vector ahead = end - corner;
  constexpr double kStraight = 1e-9;
  if (radius == 0 || std::abs(cross(back, ahead)) <= kStraight * back.length() * ahead.length())
    return cairo_line_to(cairo, corner.x, corner.y);
  const double half =
      std::acos(
          std::clamp(back.unit().x * ahead.unit().x + back.unit().y * ahead.unit().y, -1.0, 1.0)) /
      2;
  const Vector first = corner + back.unit() * (radius / std::tan(half));
  const Vector last = corner + ahead.unit() * (radius / std::tan(half));
  const Vector center = corner + (back.unit() + ahead.unit()).unit() * (radius / std::sin(half));
  const double begin = std::atan2(first.y - center.y, first.x - center.x);
  const double stop = std::atan2(last.y - center.y, last.x - center.x);
  if (cross(back, ahead) < 0) cairo_arc(cairo, center.x, center.y, radius, begin, stop);
  else cairo_arc_negative(cairo, center.x, center.y, radius, begin, stop);
}

/// Whether a path was begun, and the point can be added to it.
bool continues(CGContextRef context, CGPoint point) {
  return context != nullptr && host::canBeReached(point) &&
         cairo_has_current_point(context->cairo.get()) != 0;
}

}  // namespace

extern "C" {

HOST_EXPORT void CGContextBeginPath(CGContextRef context) {
  if (context != nullptr) cairo_new_path(context->cairo.get());
}
HOST_EXPORT void CGContextMoveToPoint(CGContextRef context, CGFloat x, CGFloat y) {
  if (context != nullptr && host::canBeReached({x, y})) cairo_move_to(context->cairo.get(), x, y);
}
HOST_EXPORT void CGContextAddLineToPoint(CGContextRef context, CGFloat x, CGFloat y) {
  if (continues(context, {x, y})) cairo_line_to(context->cairo.get(), x, y);
}
HOST_EXPORT void CGContextAddArcToPoint(CGContextRef context, CGFloat cornerX, CGFloat cornerY,
                                        CGFloat endX, CGFloat endY, CGFloat radius) {
  if (!continues(context, {cornerX, cornerY}) || !host::canBeReached({endX, endY})) return;
  if (!(radius >= 0 && radius < host::kFarthest)) return;
  roundCorner(context->cairo.get(), {cornerX, cornerY}, {endX, endY}, radius);
}
HOST_EXPORT void CGContextClosePath(CGContextRef context) {
  if (context != nullptr) cairo_close_path(context->cairo.get());
}
HOST_EXPORT void CGContextClip(CGContextRef context) {
  if (context != nullptr) cairo_clip(context->cairo.get());
}

HOST_EXPORT void CGContextSetRGBStrokeColor(CGContextRef context, CGFloat red, CGFloat green,
                                            CGFloat blue, CGFloat alpha) {
  if (context == nullptr) return;
  context->state().stroke = {host::unit(red), host::unit(green), host::unit(blue),
                             host::unit(alpha)};
}
HOST_EXPORT void CGContextSetStrokeColorWithColor(CGContextRef context, CGColorRef color) {
  if (color == nullptr) return;
  const auto& c = color->components;
  if (color->count == 2) CGContextSetRGBStrokeColor(context, c[0], c[0], c[0], c[1]);
  else CGContextSetRGBStrokeColor(context, c[0], c[1], c[2], c[3]);
}
HOST_EXPORT void CGContextSetLineWidth(CGContextRef context, CGFloat width) {
  if (context != nullptr && width > 0 && width < host::kFarthest)
    cairo_set_line_width(context->cairo.get(), width);
}

HOST_EXPORT void CGContextStrokePath(CGContextRef context) {
  if (context == nullptr) return;
  // Lines cannot be a clip, so they become a mask, which every mode respects.
  cairo_t* cairo = context->cairo.get();
  CGContext::Mask lines{};
  cairo_get_matrix(cairo, &lines.place);
  cairo_push_group_with_content(cairo, CAIRO_CONTENT_ALPHA);
  cairo_set_operator(cairo, CAIRO_OPERATOR_OVER);
  cairo_set_source_rgba(cairo, 0, 0, 0, 1);
  cairo_stroke(cairo);
  lines.pattern = {cairo_pop_group(cairo), &cairo_pattern_destroy};
  auto& masks = context->state().masks;
  masks.push_back(std::move(lines));
  host::composite(context, [&](cairo_t* under) {
    const auto& state = context->state();
    cairo_set_source_rgba(under, state.stroke[0], state.stroke[1], state.stroke[2],
                          state.stroke[3] * state.alpha);
    return true;
  });
  masks.pop_back();
}
}
