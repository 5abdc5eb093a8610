// Pictures to measure with.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "objc/strong.h"
#include "platform/UIKit.h"

namespace bench {

/// Rows from the top, four bytes a pixel: red, green, blue, alpha. Opaque.
struct Pixels {
  int width, height;
  std::vector<std::uint8_t> bytes;
};

/// Soft areas of several colours with some grain; the same at each run.
Pixels generatedPixels(int width, int height);

/// The picture of a PNG or JPEG file, stretched to that size and laid on white. Nothing where it
/// cannot be read.
std::optional<Pixels> pixelsOfFile(const std::string& path, int width, int height);

/// An image over those bytes, which are not copied.
Strong<UIImage> imageOver(const Pixels& pixels);

/// "#rrggbb"; "none" for nil.
std::string hex(UIColor* color);

}  // namespace bench
