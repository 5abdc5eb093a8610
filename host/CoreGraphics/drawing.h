// Draws into a context: first takes over what is in its memory, and puts the result back
// afterwards.
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
/// its clip to what is drawn, and returns whether there is anything to draw. Cairo's state is saved
/// around it.
void composite(CGContext* context, const std::function<bool(cairo_t*)>& prepare,
               double opacity = 1);

/// A mask covers by its alpha, or for a grey image without alpha by its grey values, fully where
/// white.
enum class ImageUse { colors, mask };

/// Makes the image cairo's source, stretched to the rectangle, and moves cairo to the rectangle's
/// space. False if nothing of it would be visible.
bool setImage(CGContext* context, cairo_t* cairo, CGRect rect, CGImage* image, ImageUse use);

/// Applies the transform before the context's own. False, and nothing is done, if the two together
/// cannot be inverted: cairo would stay in an error state for good.
bool concatenate(cairo_t* cairo, const cairo_matrix_t& transform);

/// Points further away than any bitmap's size are beyond cairo's coordinates.
inline constexpr CGFloat kFarthest = 1e6;
/// False for points beyond that, or with NaN.
inline bool canBeReached(CGPoint point) {
  return std::abs(point.x) < kFarthest && std::abs(point.y) < kFarthest;
}

/// Narrows the clip to a rectangle, whose sides may be negative. False, and nothing is done, if
/// nothing would be left to draw on.
bool clipTo(cairo_t* cairo, CGRect rect);
/// Narrows the clip to nothing.
void clipAll(cairo_t* cairo);

/// 0 to 1; NaN gives 0.
inline CGFloat unit(CGFloat value) { return value > 0 ? std::min<CGFloat>(value, 1) : 0; }

}  // namespace host
