// How an image's functions keep their callers' registers, from its section __unwind_info.
#pragma once

#include <vector>

#include "loader/frame_table.h"
#include "loader/image_file.h"

namespace varnix::device {

/// The functions for 64-bit Arm that have linked frames, counted from the image's start; those
/// without one call nobody, so that no exception passes them. Empty where there is no such section.
/// Throws Error for a form that is not known, and for functions outside the image or out of order.
std::vector<CodeFrame> readUnwindInfo(const ImageFile& image);

}  // namespace varnix::device
