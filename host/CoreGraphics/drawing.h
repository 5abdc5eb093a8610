// Drawing into a context: what stood in its memory comes first, what was drawn is there after.
#pragma once

#include "CoreGraphics/objects.h"

namespace host {

class Drawing {
 public:
  explicit Drawing(CGContext* context) : context_(context) { context_->load(); }
  ~Drawing() { context_->store(); }
  Drawing(const Drawing&) = delete;
  Drawing& operator=(const Drawing&) = delete;

  cairo_t* cairo() const { return context_->cairo.get(); }

 private:
  CGContext* context_;
};

}  // namespace host
