// Gaussian blur.
#pragma once

#include "drawing/picture.h"

namespace varnix::drawing {

/// The picture blurred, sigma in pixels; beyond its edges its outermost pixels go on. It may come
/// back smaller: what is blurred has no fine detail, and is to be stretched again.
Surface blurred(const Surface& source, double sigma);

/// A shadow's shape has alpha alone, and keeps its size.
Surface blurredShape(const Surface& shape, double sigma);

/// Every pixel's saturation multiplied, in place.
void saturate(const Surface& surface, double factor);

}  // namespace varnix::drawing
