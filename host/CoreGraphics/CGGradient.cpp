// Linear gradients.
#include <algorithm>

#include "CoreGraphics/drawing.h"

OBJC_EXPORTED_CLASS(CGGradient, NSObject, objc::Ivar<"stops", &CGGradient::stops>)

namespace {

std::array<CGFloat, 4> rgba(const CGColor* color) {
  const auto& c = color->components;
  if (color->count == 2) return {c[0], c[0], c[0], c[1]};
  return {c[0], c[1], c[2], c[3]};
}

}  // namespace

extern "C" {

HOST_EXPORT CGGradientRef CGGradientCreateWithColors(CGColorSpaceRef, NSObject* colors,
                                                     const CGFloat* locations) {
  auto* list = objc::as<NSArray>(colors);
  const NSUInteger count = list == nullptr ? 0 : send(list, NSArray::count);
  if (count == 0) return nullptr;
  auto* gradient = host::makeObject<CGGradient>();
  auto& stops = gradient->stops;
  for (NSUInteger i = 0; i < count; ++i) {
    const double even = count == 1 ? 0 : static_cast<double>(i) / static_cast<double>(count - 1);
    const double at = locations == nullptr ? even : host::unit(locations[i]);
    auto* color = objc::as<CGColor>(send(list, NSArray::objectAtIndex, i));
    if (color == nullptr) continue;
    const auto after =
        std::find_if(stops.begin(), stops.end(), [=](const auto& stop) { return stop.at > at; });
    stops.insert(after, {at, rgba(color)});
  }
  return gradient;
}

HOST_EXPORT void CGGradientRelease(CGGradientRef gradient) { objc_release(gradient); }

HOST_EXPORT void CGContextDrawLinearGradient(CGContextRef context, CGGradientRef gradient,
                                             CGPoint start, CGPoint end,
                                             CGGradientDrawingOptions options) {
  if (context == nullptr || gradient == nullptr || gradient->stops.empty()) return;
  if (!host::canBeReached(start) || !host::canBeReached(end)) return;
  host::composite(context, [&](cairo_t* cairo) {
    cairo_pattern_t* pattern = cairo_pattern_create_linear(start.x, start.y, end.x, end.y);
    auto add = [&](double at, const std::array<CGFloat, 4>& c, CGFloat alpha) {
      cairo_pattern_add_color_stop_rgba(pattern, at, c[0], c[1], c[2], c[3] * alpha);
    };
    const CGFloat alpha = context->state().alpha;
    const auto& stops = gradient->stops;
    // Cairo continues with the outermost stops; they are clear where the gradient must not
    // continue.
    if ((options & kCGGradientDrawsBeforeStartLocation) == 0) add(0, {}, 0);
    add(0, stops.front().color, alpha);
    for (const auto& stop : stops) add(stop.at, stop.color, alpha);
    add(1, stops.back().color, alpha);
    if ((options & kCGGradientDrawsAfterEndLocation) == 0) add(1, {}, 0);
    cairo_pattern_set_extend(pattern, CAIRO_EXTEND_PAD);
    cairo_set_source(cairo, pattern);
    cairo_pattern_destroy(pattern);
    return true;
  });
}
}
