#include "CoreGraphics/drawing.h"

#include <cmath>

namespace host {

namespace {

bool canBeUndone(const cairo_matrix_t& m) {
  constexpr double kSmallest = 1e-20;
  constexpr double kLargest = 1e20;
  for (const double part : {m.xx, m.yx, m.xy, m.yy, m.x0, m.y0}) {
    if (!(std::abs(part) < kLargest)) return false;
  }
  return std::abs(m.xx * m.yy - m.xy * m.yx) > kSmallest;
}

}  // namespace

bool concatenate(cairo_t* cairo, const cairo_matrix_t& transform) {
  cairo_matrix_t now;
  cairo_get_matrix(cairo, &now);
  cairo_matrix_multiply(&now, &transform, &now);
  if (!canBeUndone(now)) return false;
  cairo_set_matrix(cairo, &now);
  return true;
}

bool clipTo(cairo_t* cairo, CGRect rect) {
  const double x = rect.origin.x + rect.size.width;
  const double y = rect.origin.y + rect.size.height;
  if (std::isnan(x) || std::isnan(y)) return false;
  double left, top, right, bottom;
  cairo_clip_extents(cairo, &left, &top, &right, &bottom);
  // Cairo's coordinates would overflow for a rectangle far larger than the bitmap.
  left = std::max<double>(left, std::min<double>(rect.origin.x, x));
  right = std::min<double>(right, std::max<double>(rect.origin.x, x));
  top = std::max<double>(top, std::min<double>(rect.origin.y, y));
  bottom = std::min<double>(bottom, std::max<double>(rect.origin.y, y));
  if (!(left < right && top < bottom)) return false;
  cairo_new_path(cairo);
  cairo_rectangle(cairo, left, top, right - left, bottom - top);
  cairo_clip(cairo);
  return true;
}

void clipAll(cairo_t* cairo) {
  cairo_new_path(cairo);
  cairo_rectangle(cairo, 0, 0, 0, 0);
  cairo_clip(cairo);
}

}  // namespace host
