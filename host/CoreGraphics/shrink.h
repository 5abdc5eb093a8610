// Images made smaller, each pixel the mean of what it covers.
#pragma once

#include <cstddef>
#include <cstdint>

#include "export.h"

namespace host {

/// Rows of cairo's pixels, a number of pixels apart.
struct PixelRows {
  std::uint32_t* pixels;
  std::size_t stride;
  std::size_t width, height;
};

/// Every pixel of `to` becomes the mean of the area of `from` that it stands for, rounded; pixels
/// on the area's edge count by the part that lies inside. `to` is no larger either way.
HOST_EXPORT void shrink(const PixelRows& from, const PixelRows& to);

}  // namespace host
