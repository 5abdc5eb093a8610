// The transform from the user's space to the bitmap.
#include <cmath>

#include "CoreGraphics/drawing.h"

namespace {

void apply(CGContextRef context, const cairo_matrix_t& transform) {
  if (context == nullptr) return;
  cairo_t* cairo = context->cairo.get();
  // Under a transform without an inverse nothing has an area, until the earlier state is restored.
  if (!host::concatenate(cairo, transform)) host::clipAll(cairo);
}

}  // namespace

extern "C" {

HOST_EXPORT void CGContextTranslateCTM(CGContextRef context, CGFloat x, CGFloat y) {
  apply(context, {1, 0, 0, 1, x, y});
}
HOST_EXPORT void CGContextScaleCTM(CGContextRef context, CGFloat x, CGFloat y) {
  apply(context, {x, 0, 0, y, 0, 0});
}
HOST_EXPORT void CGContextRotateCTM(CGContextRef context, CGFloat angle) {
  const double sine = std::sin(angle);
  const double cosine = std::cos(angle);
  apply(context, {cosine, sine, -sine, cosine, 0, 0});
}
HOST_EXPORT void CGContextConcatCTM(CGContextRef context, CGAffineTransform t) {
  apply(context, {t.a, t.b, t.c, t.d, t.tx, t.ty});
}

HOST_EXPORT CGAffineTransform CGContextGetCTM(CGContextRef context) {
  if (context == nullptr) return {1, 0, 0, 1, 0, 0};
  cairo_matrix_t m;
  cairo_get_matrix(context->cairo.get(), &m);
  // Cairo's own space has its origin at the upper left.
  const cairo_matrix_t upright = {1, 0, 0, -1, 0, static_cast<double>(context->height)};
  cairo_matrix_multiply(&m, &m, &upright);
  return {m.xx, m.yx, m.xy, m.yy, m.x0, m.y0};
}
}
