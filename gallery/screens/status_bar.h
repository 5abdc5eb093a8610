// The bar with the time, at the top of every screen.
#pragma once

#include <string>

#include "drawing/canvas.h"

namespace varnix::screens {

using namespace drawing;

inline constexpr double kStatusBarHeight = 20;

/// Drawn over what is already there.
void drawStatusBar(const Canvas& canvas, const Color& foreground);

}  // namespace varnix::screens
