// The names that a library exports.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "loader/image_file.h"

namespace varnix::device {

/// Offsets from the image's start, by name. On armv7 the lowest bit is set for a function in Thumb
/// code. Throws Error if the tree is not a tree, leaves the file, is deeper than 256 nodes, or
/// names something outside the image or in another library.
std::map<std::string, uint64_t, std::less<>> readExports(const ImageFile& image);

}  // namespace varnix::device
