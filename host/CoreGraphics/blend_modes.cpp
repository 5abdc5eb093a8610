// How colours are mixed, and how smoothly things are drawn.
#include "CoreGraphics/objects.h"

namespace {

/// Indexed by the platform's number. Cairo has all of them except one.
constexpr cairo_operator_t kOperators[] = {
    CAIRO_OPERATOR_OVER,            // normal
    CAIRO_OPERATOR_MULTIPLY,        // multiply
    CAIRO_OPERATOR_SCREEN,          // screen
    CAIRO_OPERATOR_OVERLAY,         // overlay
    CAIRO_OPERATOR_DARKEN,          // darken
    CAIRO_OPERATOR_LIGHTEN,         // lighten
    CAIRO_OPERATOR_COLOR_DODGE,     // colour dodge
    CAIRO_OPERATOR_COLOR_BURN,      // colour burn
    CAIRO_OPERATOR_SOFT_LIGHT,      // soft light
    CAIRO_OPERATOR_HARD_LIGHT,      // hard light
    CAIRO_OPERATOR_DIFFERENCE,      // difference
    CAIRO_OPERATOR_EXCLUSION,       // exclusion
    CAIRO_OPERATOR_HSL_HUE,         // hue
    CAIRO_OPERATOR_HSL_SATURATION,  // saturation
    CAIRO_OPERATOR_HSL_COLOR,       // colour
    CAIRO_OPERATOR_HSL_LUMINOSITY,  // luminosity
    CAIRO_OPERATOR_CLEAR,           // clear
    CAIRO_OPERATOR_SOURCE,          // copy
    CAIRO_OPERATOR_IN,              // source in
    CAIRO_OPERATOR_OUT,             // source out
    CAIRO_OPERATOR_ATOP,            // source atop
    CAIRO_OPERATOR_DEST_OVER,       // destination over
    CAIRO_OPERATOR_DEST_IN,         // destination in
    CAIRO_OPERATOR_DEST_OUT,        // destination out
    CAIRO_OPERATOR_DEST_ATOP,       // destination atop
    CAIRO_OPERATOR_XOR,             // exclusive or
    CAIRO_OPERATOR_OVER,            // plus darker, drawn as normal
    CAIRO_OPERATOR_ADD,             // plus lighter
};

}  // namespace

extern "C" {

HOST_EXPORT void CGContextSetBlendMode(CGContextRef context, CGBlendMode mode) {
  const auto index = static_cast<std::size_t>(mode);
  if (context == nullptr) return;
  // An unknown number changes nothing.
  if (index < std::size(kOperators)) cairo_set_operator(context->cairo.get(), kOperators[index]);
}

HOST_EXPORT void CGContextSetInterpolationQuality(CGContextRef context,
                                                  CGInterpolationQuality quality) {
  if (context != nullptr) context->state().interpolation = quality;
}

HOST_EXPORT void CGContextSetShouldAntialias(CGContextRef context, bool shouldAntialias) {
  if (context == nullptr) return;
  cairo_set_antialias(context->cairo.get(),
                      shouldAntialias ? CAIRO_ANTIALIAS_DEFAULT : CAIRO_ANTIALIAS_NONE);
}
}
