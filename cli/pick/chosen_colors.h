// The colours that were picked: side by side, and in use.
#pragma once

#include "pick/canvas.h"

namespace varnix::cli::pick {

/// Five in a row of the box's height, each with its name, value and contrast below, which takes 96
/// points more.
void drawSwatches(Canvas& canvas, const Analysis& image, const Box& row);

/// A line of text in either text colour, on the background.
void drawSample(Canvas& canvas, const Analysis& image, const Box& box);

}  // namespace varnix::cli::pick
