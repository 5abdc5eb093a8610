// The names that a library offers.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "loader/image_file.h"

namespace varnix::device {

/// Offsets from the image's start, by name; on armv7 a function's lowest bit is set where it is
/// Thumb code. Throws Error where the tree is no tree, leaves the file, is deeper than 256 nodes,
/// or names something outside the image, or what another library has.
std::map<std::string, uint64_t, std::less<>> readExports(const ImageFile& image);

}  // namespace varnix::device
