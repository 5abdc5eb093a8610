// A context's state, and plain fills.
#include "CoreGraphics/drawing.h"

namespace {

void fill(CGContextRef context, CGRect rect, cairo_operator_t how) {
  if (context == nullptr) return;
  const host::Drawing drawing(context);
  cairo_t* cairo = drawing.cairo();
  const auto& state = context->state();
  cairo_save(cairo);
  // Some operators reach beyond what is filled: the clip does not let them.
  if (host::clipTo(cairo, rect)) {
    cairo_set_operator(cairo, how);
    cairo_set_source_rgba(cairo, state.fill[0], state.fill[1], state.fill[2],
                          state.fill[3] * state.alpha);
    cairo_paint(cairo);
  }
  cairo_restore(cairo);
}

}  // namespace

extern "C" {

HOST_EXPORT void CGContextSaveGState(CGContextRef context) {
  if (context == nullptr) return;
  cairo_save(context->cairo.get());
  context->states.push_back(context->state());
}
HOST_EXPORT void CGContextRestoreGState(CGContextRef context) {
  if (context == nullptr || context->states.size() < 2) return;
  cairo_restore(context->cairo.get());
  context->states.pop_back();
}

HOST_EXPORT void CGContextSetAlpha(CGContextRef context, CGFloat alpha) {
  if (context != nullptr) context->state().alpha = host::unit(alpha);
}
HOST_EXPORT void CGContextSetRGBFillColor(CGContextRef context, CGFloat red, CGFloat green,
                                          CGFloat blue, CGFloat alpha) {
  if (context == nullptr) return;
  context->state().fill = {host::unit(red), host::unit(green), host::unit(blue), host::unit(alpha)};
}
HOST_EXPORT void CGContextSetFillColorWithColor(CGContextRef context, CGColorRef color) {
  if (color == nullptr) return;
  const auto& c = color->components;
  if (color->count == 2) CGContextSetRGBFillColor(context, c[0], c[0], c[0], c[1]);
  else CGContextSetRGBFillColor(context, c[0], c[1], c[2], c[3]);
}

HOST_EXPORT void CGContextFillRect(CGContextRef context, CGRect rect) {
  if (context != nullptr) fill(context, rect, cairo_get_operator(context->cairo.get()));
}
HOST_EXPORT void CGContextClearRect(CGContextRef context, CGRect rect) {
  fill(context, rect, CAIRO_OPERATOR_CLEAR);
}
HOST_EXPORT void CGContextClipToRect(CGContextRef context, CGRect rect) {
  if (context == nullptr) return;
  if (!host::clipTo(context->cairo.get(), rect)) host::clipAll(context->cairo.get());
}
}
