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

/// Soft areas of several colours with a little noise; the same in every run.
Pixels generatedPixels(int width, int height);

/// The picture in a PNG or JPEG file, stretched to that size on a white ground. Nothing if it
/// cannot be read.
std::optional<Pixels> pixelsOfFile(const std::string& path, int width, int height);

/// An image that refers to those bytes without copying them.
Strong<UIImage> imageOver(const Pixels& pixels);

/// "#rrggbb"; "none" for nil.
std::string hex(UIColor* color);

}  // namespace bench
