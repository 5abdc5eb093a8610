// Pictures inside a page.
#pragma once

#include <string>

namespace varnix::screens {

/// How a page's pictures are packed: as they are, or as JPEG, which is small whatever they show.
enum class Packing : unsigned char { png, jpeg };

/// The "data:" URL of a PNG file. Throws std::runtime_error if it cannot be packed so.
std::string dataAddress(const std::string& png, Packing packing);

}  // namespace varnix::screens
