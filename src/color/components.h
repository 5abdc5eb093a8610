// Components of a colour.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// Hue, saturation, brightness, alpha, each 0 to 1; all 0 for nil and for a colour that has none,
/// such as a pattern.
struct Hsb {
  CGFloat hue, saturation, brightness, alpha;
};

/// The category on UIColor answers `hue`, `saturation`, `brightness` and `alpha` from this.
Hsb hsb(UIColor* color);

/// Red, green and blue in single precision: 0 for nil and for a colour whose CGColor has another
/// number of components than four. So the platform's white, a grey, counts as black.
struct Rgb {
  float red, green, blue;
};

Rgb rgb(UIColor* color);

}  // namespace varnix::Color
