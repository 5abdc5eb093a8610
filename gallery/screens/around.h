// Drawing around a middle.
#pragma once

#include "gallery/screens/canvas.h"

namespace varnix::screens {

/// As long as it lives, (0, 0) is the middle.
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
