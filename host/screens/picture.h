// Pictures in memory: wallpapers, icons, finished screens.
#pragma once

#include <memory>
#include <string>

#include <cairo.h>

#include "screens/color.h"

namespace host::screens {

using Surface = std::shared_ptr<cairo_surface_t>;

/// A transparent image of that many pixels. Throws std::runtime_error where there is no memory.
Surface makeSurface(int width, int height, cairo_format_t format = CAIRO_FORMAT_ARGB32);
int widthOf(const Surface& surface);
int heightOf(const Surface& surface);

/// A PNG or JPEG file, turned as its orientation says, shrunk so that no side is longer than
/// that many pixels. Throws std::runtime_error with the reason.
Surface readPicture(const std::string& file, int longestSide);

/// The mean of its pixels, laid on black.
Color meanColor(const Surface& surface);

/// An opaque picture as a PNG file of the least effort that still compresses flat areas well.
std::string encodePng(const Surface& surface);

}  // namespace host::screens
