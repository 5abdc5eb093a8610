// Pictures in memory: wallpapers, icons, finished screens.
#pragma once

#include <memory>
#include <string>

#include <cairo.h>

#include "drawing/color.h"

namespace varnix::drawing {

using Surface = std::shared_ptr<cairo_surface_t>;

/// A transparent image of that many pixels. Throws std::runtime_error where there is no memory.
Surface makeSurface(int width, int height, cairo_format_t format = CAIRO_FORMAT_ARGB32);
int widthOf(const Surface& surface);
int heightOf(const Surface& surface);

/// The same picture no larger, every pixel the mean of what it covers.
Surface shrunk(const Surface& source, int width, int height);

struct Pixels {
  int width, height;
};

/// A PNG or JPEG file, turned as its orientation says, shrunk as far as it still covers so many
/// pixels. Throws std::runtime_error with the reason. Problem is what is wrong with a picture of
/// which a part is there; else empty.
Surface readPicture(const std::string& file, const Pixels& covered, std::string& problem);

/// The mean of its pixels, laid on black.
Color meanColor(const Surface& surface);

/// An opaque picture as a PNG file of the least effort that still compresses flat areas well.
std::string encodePng(const Surface& surface);

}  // namespace varnix::drawing
