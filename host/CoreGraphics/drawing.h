// Drawing into a context: what stood in its memory comes first, what was drawn is there after.
#pragma once

#include <cmath>
#include <functional>

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

/// Draws in the context's blend mode and under its masks. The function sets cairo's source, narrows
/// its clip to what is drawn, and answers whether anything is; cairo's state is saved around it.
void composite(CGContext* context, const std::function<bool(cairo_t*)>& prepare,
               double opacity = 1);

/// A mask covers by its alpha; a grey image without alpha by its greys, white being all.
enum class ImageUse { colors, mask };

/// The image becomes cairo's source, stretched to the rectangle, in whose space cairo is then.
/// False where nothing of it could be seen.
bool setImage(CGContext* context, cairo_t* cairo, CGRect rect, CGImage* image, ImageUse use);

/// Puts the transform before what the context has. False, and nothing done, where the two together
/// cannot be undone: cairo would give up for good.
bool concatenate(cairo_t* cairo, const cairo_matrix_t& transform);

/// Points further away than any bitmap is long are beyond cairo's coordinates.
inline constexpr CGFloat kFarthest = 1e6;
/// So are points that are no numbers.
inline bool canBeReached(CGPoint point) {
  return std::abs(point.x) < kFarthest && std::abs(point.y) < kFarthest;
}

/// Narrows the clip to a rectangle, whose sides may run either way. False, and nothing done, where
/// nothing would be left to draw on.
bool clipTo(cairo_t* cairo, CGRect rect);
/// Narrows the clip to nothing.
void clipAll(cairo_t* cairo);

/// 0 to 1; what is no number is 0.
inline CGFloat unit(CGFloat value) { return value > 0 ? std::min<CGFloat>(value, 1) : 0; }

}  // namespace host
