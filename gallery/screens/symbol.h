// A symbol that is noted as such while it is drawn.
#pragma once

#include "drawing/ink.h"

namespace varnix::screens {

using namespace drawing;

/// Calls the function, which draws around that point, within a square of that side.
template <class Draw>
void drawSymbol(const Canvas& canvas, Point middle, const Color& color, const Draw& draw,
                double side = 40) {
  const Ink ink(canvas, around(middle, side, side), color, InkKind::symbol);
  draw(canvas, middle, color);
}

}  // namespace varnix::screens
