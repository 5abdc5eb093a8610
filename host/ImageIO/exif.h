// The orientation in a JPEG file's Exif segment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace host::imageio {

/// The segment's contents, "Exif" included. UIImageOrientation; 0 where there is none, or none that
/// makes sense.
int orientationFromExif(const std::uint8_t* bytes, std::size_t length);

/// The contents of a segment that says that orientation, 0 to 7.
std::string exifWithOrientation(int orientation);

}  // namespace host::imageio
