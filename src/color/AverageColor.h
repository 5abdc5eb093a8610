// An image's mean colour.
#pragma once

#include "platform/UIKit.h"

namespace varnix::Color {

/// The mean of all pixels. Its red, green and blue are the premultiplied values times alpha again,
/// so a translucent image averages darker than it looks. Never nil: an image without bitmap gives
/// transparent black.
UIColor* AverageColor(UIImage* image);

}  // namespace varnix::Color
