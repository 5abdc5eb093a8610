// An image in a different hue.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// A copy of the image with the colour's hue, as strong as the colour's alpha; saturation and
/// luminosity stay. One pixel per point, whatever the image's scale. Partly transparent edges
/// become darker and more opaque. Nil for a nil or empty image; a nil colour changes no hue.
UIImage* TintImage(UIImage* image, UIColor* color);

}  // namespace varnix::Color
