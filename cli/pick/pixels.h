// Pixels from and to the platform's images.
#pragma once

#include "pick/analysis.h"
#include "platform/UIKit.h"

namespace varnix::cli::pick {

Color colorOf(UIColor* color);

/// The image, turned upright and stretched to that size.
Pixels pixelsOf(UIImage* image, unsigned width, unsigned height);

/// The bytes behind an image, as its provider gave them. The provider is released here, since
/// nobody else does. Nothing for nil.
std::string takeRawBytes(UIImage* image);

}  // namespace varnix::cli::pick
