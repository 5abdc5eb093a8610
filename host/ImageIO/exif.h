// The orientation in a JPEG file's Exif segment.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace host::imageio {

/// From the segment's contents, including "Exif". UIImageOrientation; 0 if there is none, or an
/// invalid one.
int orientationFromExif(const std::uint8_t* bytes, std::size_t length);

/// The contents of a segment with that orientation, 0 to 7.
std::string exifWithOrientation(int orientation);

}  // namespace host::imageio
