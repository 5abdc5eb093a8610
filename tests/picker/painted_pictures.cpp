// Pictures computed pixel by pixel.
#include <algorithm>
#include <cmath>

#include "picker/canvas.h"

namespace pictures {

std::vector<Picture> singleColors() {
  std::vector<Rgba> colors;
  for (unsigned i = 0; i < 27; ++i) {
    auto level = [](unsigned step) { return static_cast<std::uint8_t>(step * 255 / 2); };
    colors.push_back({level(i % 3), level(i / 3 % 3), level(i / 9)});
  }
  for (unsigned grey : {1U, 63U, 126U, 127U, 129U, 254U}) {
    const auto byte = static_cast<std::uint8_t>(grey);
    colors.push_back({byte, byte, byte});
  }
  Dice dice(1);
  while (colors.size() < 72) colors.push_back(dice.color());
  constexpr std::array<Size, 4> kSizes{{{32, 32}, {1, 1}, {7, 100}, {64, 64}}};
  std::vector<Picture> all;
  for (const Rgba& color : colors) {
    all.push_back(paint("color " + std::to_string(all.size()), kSizes[all.size() % kSizes.size()],
                        [&](unsigned, unsigned) { return color; }));
  }
  return all;
}

std::vector<Picture> noise() {
  std::vector<Picture> all;
  Dice dice(2);
  for (unsigned i = 0; i < 72; ++i) {
    const std::string name = "noise " + std::to_string(i);
    const Size size = someSize(i / 3);
    if (i % 3 == 0) {
      all.push_back(paint(name, size, [&](unsigned, unsigned) { return dice.color(); }));
    } else if (i % 3 == 1) {
      // Around one colour, so that many distances are close to the limit.
      const Rgba middle = dice.color();
      const unsigned spread = 8 + 8 * (i / 3 % 8);
      auto near = [&](std::uint8_t value) {
        const int moved =
            value + static_cast<int>(dice.below(2 * spread)) - static_cast<int>(spread);
        return static_cast<std::uint8_t>(std::clamp(moved, 0, 255));
      };
      all.push_back(paint(name, size, [&](unsigned, unsigned) {
        const std::uint8_t red = near(middle.red);
        const std::uint8_t green = near(middle.green);
        return Rgba{red, green, near(middle.blue)};
      }));
    } else {
      std::vector<Rgba> palette;
      for (unsigned n = 0; n < 2 + i % 7; ++n) palette.push_back(dice.color());
      all.push_back(paint(name, size, [&](unsigned, unsigned) {
        return palette[dice.below(static_cast<unsigned>(palette.size()))];
      }));
    }
  }
  return all;
}

std::vector<Picture> gradients() {
  std::vector<Picture> all;
  Dice dice(3);
  for (unsigned i = 0; i < 72; ++i) {
    const Rgba from = dice.color();
    const Rgba to = dice.color();
    const Size size = someSize(i / 4);
    auto position = [&](unsigned x, unsigned y) -> unsigned {
      const unsigned across = 256 * x / size.width;
      const unsigned down = 256 * y / size.height;
      const unsigned fromMiddle =
          (across > 128 ? across - 128 : 128 - across) + (down > 128 ? down - 128 : 128 - down);
      const std::array<unsigned, 4> ways{across, down, (across + down) / 2, fromMiddle};
      return ways[i % 4];
    };
    all.push_back(paint("gradient " + std::to_string(i), size, [&](unsigned x, unsigned y) {
      const unsigned t = position(x, y);
      auto mix = [&](unsigned a, unsigned b) {
        return static_cast<std::uint8_t>((a * (256 - t) + b * t) / 256);
      };
      return Rgba{mix(from.red, to.red), mix(from.green, to.green), mix(from.blue, to.blue)};
    }));
  }
  return all;
}

std::vector<Picture> inksOnPaper() {
  constexpr std::array<Rgba, 4> kPapers{
      {{250, 250, 245}, {10, 12, 20}, {240, 225, 130}, {30, 60, 120}}};
  constexpr std::array<Rgba, 4> kDarkInks{{{200, 20, 30}, {20, 30, 200}, {10, 120, 40}, {0, 0, 0}}};
  constexpr std::array<Rgba, 4> kLightInks{
      {{250, 250, 250}, {250, 200, 20}, {230, 60, 60}, {90, 220, 90}}};
  std::vector<Picture> all;
  for (unsigned i = 0; i < 72; ++i) {
    const Size size = someSize(i);
    const Rgba& paper = kPapers[i % 4];
    const auto& inks = i % 2 == 0 ? kDarkInks : kLightInks;
    const unsigned first = i / 4 % 4;
    const unsigned step = 1 + 2 * (i / 16 % 2);
    // Strips in the upper left quarter; the first ink's is the widest.
    all.push_back(paint("inks " + std::to_string(i), size, [&](unsigned x, unsigned y) {
      const unsigned column = 32 * x / size.width;
      const unsigned row = 32 * y / size.height;
      if (row < 2 || row > 10 || column > 9) return paper;
      const unsigned strip = column < 5 ? 0 : column < 8 ? 1 : 2;
      return inks[(first + strip * step) % 4];
    }));
  }
  return all;
}

std::vector<Picture> transparent() {
  std::vector<Picture> all;
  Dice dice(5);
  for (unsigned i = 0; i < 72; ++i) {
    const Size size = someSize(i / 4);
    const Rgba color = dice.color();
    const auto alpha = static_cast<std::uint8_t>(i * 255 / 71);
    all.push_back(paint("transparent " + std::to_string(i), size, [&](unsigned x, unsigned y) {
      switch (i % 4) {
        case 0:
          return premultiplied({color.red, color.green, color.blue, alpha});
        case 1: {
          Rgba any = dice.color();
          any.alpha = dice.byte();
          return premultiplied(any);
        }
        case 2:
          // A disc on a transparent ground.
          return std::hypot(2.0 * x / size.width - 1, 2.0 * y / size.height - 1) < 0.8
                     ? color
                     : Rgba{0, 0, 0, 0};
        default: {
          const auto fading = static_cast<std::uint8_t>(255 * x / size.width);
          return i == 3 ? Rgba{0, 0, 0, 0}
                        : premultiplied({color.red, color.green, color.blue, fading});
        }
      }
    }));
  }
  return all;
}

}  // namespace pictures
