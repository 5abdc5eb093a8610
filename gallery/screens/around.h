// Drawing around a centre.
#pragma once

#include "drawing/canvas.h"

namespace varnix::screens {

using namespace drawing;

/// While it exists, (0, 0) is the given point.
class Around {
 public:
  Around(const Canvas& canvas, Point middle) : canvas_(canvas) {
    canvas.save();
    cairo_translate(canvas.context(), middle.x, middle.y);
  }
  ~Around() { canvas_.restore(); }
  Around(const Around&) = delete;
  Around& operator=(const Around&) = delete;

 private:
  const Canvas& canvas_;
};

}  // namespace varnix::screens
