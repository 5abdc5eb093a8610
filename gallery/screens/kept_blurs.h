// Blurred pictures that are needed again and again: home screens behind panels, wallpapers.
#pragma once

#include "drawing/picture.h"

namespace varnix::screens {

using drawing::Surface;

/// An opaque picture blurred, with its saturation multiplied. The last few are kept, and used for
/// pictures of the same pixels. May be called on any thread; the result must not be changed.
Surface keptBlur(const Surface& picture, double sigma, double saturation);

}  // namespace varnix::screens
