// Colours of a picture's analysis.
#pragma once

#include "drawing/byte_color.h"

namespace varnix::cli::pick {

using Color = drawing::ByteColor;
using drawing::contrastRatio;
using drawing::hex;
using drawing::laidOn;

}  // namespace varnix::cli::pick
