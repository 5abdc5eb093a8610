// Used by the code that makes pictures.
#pragma once

#include <random>

#include "picker/pictures.h"

namespace pictures {

struct Rgba {
  std::uint8_t red, green, blue, alpha = 255;
};

/// The same numbers everywhere: the standard's distributions differ between libraries.
class Dice {
 public:
  explicit Dice(unsigned seed) : engine_(seed) {}

  unsigned below(unsigned limit) { return static_cast<unsigned>(engine_() % limit); }
  std::uint8_t byte() { return static_cast<std::uint8_t>(below(256)); }
  Rgba color() {
    const std::uint8_t red = byte();
    const std::uint8_t green = byte();
    return {red, green, byte()};
  }

 private:
  std::mt19937 engine_;
};

struct Size {
  unsigned width, height;
};

/// One size that needs no squeezing, and others that do.
inline Size someSize(std::size_t index) {
  constexpr std::array<Size, 8> kSizes{
      {{32, 32}, {32, 32}, {64, 64}, {32, 32}, {37, 101}, {32, 32}, {180, 120}, {96, 33}}};
  return kSizes[index % kSizes.size()];
}

inline void put(Picture& picture, unsigned x, unsigned y, const Rgba& color) {
  std::uint8_t* pixel = &picture.rgba[(std::size_t{y} * picture.width + x) * 4];
  pixel[0] = color.red;
  pixel[1] = color.green;
  pixel[2] = color.blue;
  pixel[3] = color.alpha;
}

/// The function returns the colour of each pixel.
template <class Function>
Picture paint(std::string name, Size size, Function colorAt) {
  Picture picture{std::move(name), size.width, size.height,
                  std::vector<std::uint8_t>(std::size_t{size.width} * size.height * 4)};
  for (unsigned y = 0; y < size.height; ++y) {
    for (unsigned x = 0; x < size.width; ++x) put(picture, x, y, colorAt(x, y));
  }
  return picture;
}

inline Rgba premultiplied(const Rgba& color) {
  auto times = [&](std::uint8_t value) {
    return static_cast<std::uint8_t>((value * color.alpha + 127) / 255);
  };
  return {times(color.red), times(color.green), times(color.blue), color.alpha};
}

}  // namespace pictures
