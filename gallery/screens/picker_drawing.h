// The colour library's picker over a page.
#pragma once

#include "drawing/canvas.h"

namespace varnix::screens {

/// Dims what has been drawn, and draws the card with that colour chosen: a ring of hues around a
/// field of saturation and brightness, and the digits below.
void drawPicker(const drawing::Canvas& canvas, const drawing::Color& color);

}  // namespace varnix::screens
