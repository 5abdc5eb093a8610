// Pictures in memory: wallpapers, icons, finished screens.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include <cairo.h>

#include "drawing/color.h"

namespace varnix::drawing {

using Surface = std::shared_ptr<cairo_surface_t>;

/// A transparent image of that many pixels. Throws std::runtime_error if there is no memory.
Surface makeSurface(int width, int height, cairo_format_t format = CAIRO_FORMAT_ARGB32);
int widthOf(const Surface& surface);
int heightOf(const Surface& surface);

/// The same picture, not enlarged; every pixel is the mean of what it covers.
Surface shrunk(const Surface& source, int width, int height);

struct Pixels {
  int width, height;
};

/// A PNG or JPEG file, turned as its orientation says, and shrunk as far as it still covers that
/// many pixels. Throws std::runtime_error with the reason. If only part of a picture is there,
/// `problem` says what is wrong; else it is empty.
Surface readPicture(const std::string& file, const Pixels& covered, std::string& problem);

/// A PNG file's contents. Throws std::runtime_error with the reason.
Surface readPng(std::string_view png);

/// The mean of its pixels, on a black ground.
Color meanColor(const Surface& surface);

/// What a PNG file is for: to be kept, with flat areas compressed well, or to be shown once, soon.
enum class Effort { kept, shown };

/// An opaque picture as a PNG file.
std::string encodePng(const Surface& surface, Effort effort = Effort::kept);

}  // namespace varnix::drawing
