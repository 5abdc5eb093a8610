// The chosen colours, side by side and in use.
#pragma once

#include "pick/theme.h"

namespace varnix::cli::pick {

/// Draws five in a row of the box's height. Below each are its name, value and contrast, which take
/// 96 points more.
void drawSwatches(const Canvas& canvas, const Analysis& image, const Box& row);

/// A line of text in each of the two text colours, on the background.
void drawSample(const Canvas& canvas, const Analysis& image, const Box& box);

}  // namespace varnix::cli::pick
