// A context's state, and plain fills.
#include "CoreGraphics/drawing.h"

namespace {

void setFill(CGContextRef context, cairo_t* cairo) {
  const auto& state = context->state();
  cairo_set_source_rgba(cairo, state.fill[0], state.fill[1], state.fill[2],
                        state.fill[3] * state.alpha);
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
  if (context == nullptr) return;
  host::composite(context, [&](cairo_t* cairo) {
    setFill(context, cairo);
    return host::clipTo(cairo, rect);
  });
}
HOST_EXPORT void CGContextClearRect(CGContextRef context, CGRect rect) {
  if (context == nullptr) return;
  const host::Drawing drawing(context);
  cairo_save(drawing.cairo());
  cairo_set_operator(drawing.cairo(), CAIRO_OPERATOR_CLEAR);
  if (host::clipTo(drawing.cairo(), rect)) cairo_paint(drawing.cairo());
  cairo_restore(drawing.cairo());
}

HOST_EXPORT void CGContextAddRect(CGContextRef context, CGRect rect) {
  const double x = rect.origin.x + rect.size.width;
  const double y = rect.origin.y + rect.size.height;
  if (context == nullptr || std::isnan(x) || std::isnan(y)) return;
  auto near = [](double value) {
    return std::clamp<double>(value, -host::kFarthest, host::kFarthest);
  };
  const double left = near(rect.origin.x);
  const double top = near(rect.origin.y);
  cairo_rectangle(context->cairo.get(), left, top, near(x) - left, near(y) - top);
}
HOST_EXPORT void CGContextAddEllipseInRect(CGContextRef context, CGRect rect) {
  const CGPoint end{rect.origin.x + rect.size.width, rect.origin.y + rect.size.height};
  if (context == nullptr || rect.size.width == 0 || rect.size.height == 0) return;
  if (!host::canBeReached(rect.origin) || !host::canBeReached(end)) return;
  constexpr double kWholeTurn = 6.283185307179586;
  cairo_t* cairo = context->cairo.get();
  cairo_save(cairo);
  cairo_translate(cairo, rect.origin.x + rect.size.width / 2, rect.origin.y + rect.size.height / 2);
  cairo_scale(cairo, rect.size.width / 2, rect.size.height / 2);
  cairo_new_sub_path(cairo);
  cairo_arc(cairo, 0, 0, 1, 0, kWholeTurn);
  cairo_restore(cairo);
}
HOST_EXPORT void CGContextFillPath(CGContextRef context) {
  if (context == nullptr) return;
  host::composite(context, [&](cairo_t* cairo) {
    setFill(context, cairo);
    cairo_clip(cairo);  // which consumes the path
    return true;
  });
}
HOST_EXPORT void CGContextClipToRect(CGContextRef context, CGRect rect) {
  if (context == nullptr) return;
  if (!host::clipTo(context->cairo.get(), rect)) host::clipAll(context->cairo.get());
}
}
