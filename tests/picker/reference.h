// The expected results of a pass and of the choices after it, computed directly on the processor.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "platform/CoreGraphics.h"

namespace reference {

inline constexpr int kSide = 32;
inline constexpr int kProcessedSide = 16;

struct Pixel {
  std::uint8_t red, green, blue, alpha;

  friend bool operator==(const Pixel&, const Pixel&) = default;
};

/// 32 x 32 pixels, the image's top row first.
using Pixels = std::array<Pixel, std::size_t{kSide} * kSide>;

/// The frame that the shader makes from a squeezed image (premultiplied), in single precision like
/// the software renderer's.
Pixels frameOf(const Pixels& image);

/// Components from 0 to 1, in the precision of the platform's colours. A grey has only two
/// components, so the measures take it for black.
struct Color {
  CGFloat red, green, blue;
  bool isGrey = false;

  friend bool operator==(const Color&, const Color&) = default;
};

Color colorOf(const Pixel& pixel);

struct Scheme {
  Color background, primary, secondary;
};

Color backgroundOf(const Pixels& frame);
/// The text colours for a background, which may differ from the frame's own.
Scheme schemeOf(const Pixels& frame, const Color& background);
inline Scheme schemeOf(const Pixels& frame) { return schemeOf(frame, backgroundOf(frame)); }

/// The colour with the greatest alpha whose squared distance from the given one exceeds the limit,
/// in a frame of any size.
Color farthestFrequent(const std::vector<Pixel>& frame, unsigned width, unsigned height,
                       const Color& from, unsigned limit);

float yOf(const Color& color);
bool contrasts(const Color& background, const Color& foreground);

struct Hsb {
  CGFloat hue, saturation, brightness;
};
Hsb hsbOf(const Color& color);

/// The colour that stands for an image with that scheme.
Color importantOf(const Scheme& scheme);

}  // namespace reference
