// Pixels in and out of the platform's images.
#pragma once

#include "pick/analysis.h"
#include "platform/UIKit.h"

namespace varnix::cli::pick {

Color colorOf(UIColor* color);

/// The image, turned upright and stretched to that size.
Pixels pixelsOf(UIImage* image, unsigned width, unsigned height);

/// The bytes behind an image, as they were given to it by a provider that nobody has released
/// since, which is done here. Nothing for nil.
std::string takeRawBytes(UIImage* image);

}  // namespace varnix::cli::pick
