// Surfaces that blur what lies behind them.
#pragma once

#include <optional>

#include "drawing/canvas.h"
#include "gallery/screens/answers.h"

namespace varnix::screens {

/// The tint that a process answered, its alpha the product of tint alpha and mask alpha; nothing
/// where the surface uses none.
std::optional<Color> tintOf(const Answers& answers);

struct Backdrop {
  Color wash;  ///< the surface's own, over the blur
  std::optional<Color> tint;
};

/// Blurs what has been drawn, by 20 points, and saturates it 1.8 times; lays the wash over it, and
/// then the tint.
void drawBackdrop(const Canvas& canvas, const Box& box, double radius, const Backdrop& backdrop);

/// The same where that has been blurred already.
void drawBackdrop(const Canvas& canvas, const Box& box, double radius, const Backdrop& backdrop,
                  const Surface& blurredBehind);

/// What has been drawn, blurred and saturated so, to be stretched over the whole canvas.
Surface blurredBehind(const Canvas& canvas);

}  // namespace varnix::screens
