// The frame's counts as shades.
#pragma once

#include "pick/theme.h"

namespace varnix::cli::pick {

/// The cells from light (0) to dark (the frame's largest count), with dots on the chosen colours,
/// and the legend below. The box is a square; the legend takes 24 points more.
void drawHeatMap(const Canvas& canvas, const Analysis& image, const Box& box);

}  // namespace varnix::cli::pick
