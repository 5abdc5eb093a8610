// Surfaces that blur what is behind them.
#pragma once

#include <optional>

#include "drawing/canvas.h"
#include "gallery/screens/answers.h"

namespace varnix::screens {

/// The tint that a process answered; its alpha is the product of tint alpha and mask alpha. Nothing
/// if the surface uses no tint.
std::optional<Color> tintOf(const Answers& answers);

struct Backdrop {
  Color wash;  ///< the surface's own colour, over the blur
  std::optional<Color> tint;
};

/// Blurs what has been drawn by 20 points and multiplies its saturation by 1.8; then paints the
/// wash over it, and then the tint.
void drawBackdrop(const Canvas& canvas, const Box& box, double radius, const Backdrop& backdrop);

/// The same if what is behind was already blurred.
void drawBackdrop(const Canvas& canvas, const Box& box, double radius, const Backdrop& backdrop,
                  const Surface& blurredBehind);

/// What has been drawn, blurred and saturated like that. Stretch it over the whole canvas, and do
/// not change it.
Surface blurredBehind(const Canvas& canvas);

}  // namespace varnix::screens
