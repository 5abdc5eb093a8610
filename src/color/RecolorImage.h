// A silhouette in one colour.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// A copy of the image in which every covered pixel has the colour, with the image's alpha times
/// the colour's. Size, scale, insets and rendering mode are the image's. The copy is resizable.
/// Fully transparent for a nil colour, nil for a nil or empty image.
UIImage* RecolorImage(UIImage* image, UIColor* color);

}  // namespace varnix::Color
