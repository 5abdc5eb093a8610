// Colours in YUV space.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// Brightness 0 to 1, for what asks `UIColor` itself: a grey and nil measure 0.
inline float yComponentFromColor(UIColor* color) {
  return send<float>(objc::classOf<UIColor>(), "yComponentFromColor:"_sel, color);
}

}  // namespace varnix::Color
