// How an image's functions save their callers' registers, from its section __unwind_info.
#pragma once

#include <vector>

#include "loader/frame_table.h"
#include "loader/image_file.h"

namespace varnix::device {

/// The functions for 64-bit Arm that have linked frames, as offsets from the image's start.
/// Functions without one call no others, so that no exception passes them. Empty if there is no
/// such section. Throws Error for an unknown form, and for functions outside the image or out of
/// order.
std::vector<CodeFrame> readUnwindInfo(const ImageFile& image);

}  // namespace varnix::device
