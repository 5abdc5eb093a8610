// The small picture beside somebody's name.
#pragma once

#include <vector>

#include "drawing/canvas.h"

namespace varnix::screens {

using namespace drawing;

/// A head and shoulders before colours from top to bottom.
void drawPortrait(const Canvas& canvas, const Box& box, double radius,
                  const std::vector<Color>& colors);

}  // namespace varnix::screens
