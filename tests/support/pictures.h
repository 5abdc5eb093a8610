// Images made in a test.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <vector>

#include "objc/owned.h"
#include "platform/UIKit.h"

namespace test {

using Pixel = std::array<std::uint8_t, 4>;  ///< red, green, blue, alpha; premultiplied

/// An image of that many pixels, each given by its column and its row from the top.
UIImage* picture(std::size_t width, std::size_t height,
                 const std::function<Pixel(std::size_t x, std::size_t y)>& pixelAt);

/// One colour everywhere, 40 x 40.
UIImage* plainPicture(std::uint8_t red, std::uint8_t green, std::uint8_t blue);

}  // namespace test
