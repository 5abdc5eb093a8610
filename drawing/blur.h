// Gaussian blur.
#pragma once

#include "drawing/picture.h"

namespace varnix::drawing {

/// The picture blurred, sigma in pixels. Beyond the edges its outermost pixels continue. The result
/// may be smaller, since a blurred picture has no fine detail; stretch it to the old size.
Surface blurred(const Surface& source, double sigma);

/// For a shadow's shape, which has only alpha and keeps its size.
Surface blurredShape(const Surface& shape, double sigma);

/// Multiplies every pixel's saturation, in place.
void saturate(const Surface& surface, double factor);

}  // namespace varnix::drawing
