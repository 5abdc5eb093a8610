// The pixels of a picture in memory, row by row.
#pragma once

#include <cstddef>
#include <cstdint>

#include <cairo.h>

namespace varnix::drawing {

/// Pixels of 32 bits, 0xAARRGGBB; flush the surface first.
inline const std::uint32_t* pixelRow(cairo_surface_t* surface, int y) {
  return reinterpret_cast<const std::uint32_t*>(cairo_image_surface_get_data(surface) +
                                                static_cast<std::ptrdiff_t>(y) *
                                                    cairo_image_surface_get_stride(surface));
}

}  // namespace varnix::drawing
