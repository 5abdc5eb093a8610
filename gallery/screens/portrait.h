// The small picture beside a person's name.
#pragma once

#include <vector>

#include "drawing/canvas.h"

namespace varnix::screens {

using namespace drawing;

/// Head and shoulders in front of colours that run from top to bottom.
void drawPortrait(const Canvas& canvas, const Box& box, double radius,
                  const std::vector<Color>& colors);

}  // namespace varnix::screens
