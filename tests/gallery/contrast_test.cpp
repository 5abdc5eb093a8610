// The nearest colour of the same hue with enough contrast against its background.
#include "gallery/page/contrast.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>

using varnix::cli::gallery::kLeastForText;
using varnix::cli::gallery::nearestOfHue;
using varnix::cli::gallery::parseColor;

namespace {

constexpr varnix::drawing::ByteColor kWhite{255, 255, 255};
constexpr varnix::drawing::ByteColor kBlack{0, 0, 0};

int chromaOf(const varnix::drawing::ByteColor& c) {
  const auto [least, most] = std::minmax({c.red, c.green, c.blue});
  return most - least;
}

/// In degrees. Computed differently from the code: as an angle in the plane of the colours.
double hueOf(const varnix::drawing::ByteColor& c) {
  const double x = c.red - (c.green + c.blue) / 2.0;
  const double y = std::sqrt(3.0) / 2 * (c.green - c.blue);
  return std::atan2(y, x) * 180 / std::acos(-1.0);
}

double hueDistance(const varnix::drawing::ByteColor& a, const varnix::drawing::ByteColor& b) {
  return std::abs(std::remainder(hueOf(a) - hueOf(b), 360));
}

TEST(Contrast, ColorsAreReadFromText) {
  EXPECT_EQ(parseColor("#1e88e5"), (varnix::drawing::ByteColor{0x1e, 0x88, 0xe5, 255}));
  EXPECT_EQ(parseColor("#1E88e580"), (varnix::drawing::ByteColor{0x1e, 0x88, 0xe5, 0x80}));
  for (const char* text : {"", "#", "1e88e5", "#1e88e", "#1e88e58", "#1e88e5800", "#1e88eg",
                           "#-1-1-1", "#+1+1+1", "# 1 1 1", "red"}) {
    EXPECT_FALSE(parseColor(text)) << text;
  }
}

TEST(Contrast, AColorThatReachesItStays) {
  EXPECT_EQ(nearestOfHue(kBlack, kWhite, kLeastForText), kBlack);
  EXPECT_EQ(nearestOfHue({0x76, 0x76, 0x76}, kWhite, kLeastForText),
            (varnix::drawing::ByteColor{0x76, 0x76, 0x76}));
}

TEST(Contrast, GreysMoveToTheNextGrey) {
  EXPECT_EQ(nearestOfHue({0x77, 0x77, 0x77}, kWhite, kLeastForText),
            (varnix::drawing::ByteColor{0x76, 0x76, 0x76}));
  EXPECT_EQ(nearestOfHue(kWhite, kWhite, kLeastForText),
            (varnix::drawing::ByteColor{0x76, 0x76, 0x76}));
  EXPECT_EQ(nearestOfHue(kBlack, kBlack, kLeastForText),
            (varnix::drawing::ByteColor{0x75, 0x75, 0x75}));
}

TEST(Contrast, ColorsOfTheSameHueGetDarkerOnWhiteAndLighterOnBlack) {
  // Pure red has 4.00 on white; the next red is darker, with the other channels still at zero.
  const auto red = nearestOfHue({255, 0, 0}, kWhite, kLeastForText);
  ASSERT_TRUE(red);
  EXPECT_EQ(red->green, 0);
  EXPECT_EQ(red->blue, 0);
  EXPECT_GE(varnix::drawing::contrastRatio(*red, kWhite), 4.5);
  varnix::drawing::ByteColor brighter = *red;
  ++brighter.red;
  EXPECT_LT(varnix::drawing::contrastRatio(brighter, kWhite), 4.5);

  const auto blue = nearestOfHue({0, 0, 255}, kBlack, kLeastForText);
  ASSERT_TRUE(blue);
  EXPECT_EQ(blue->blue, 255);
  EXPECT_EQ(blue->red, blue->green);
  EXPECT_GT(blue->red, 0);
}

TEST(Contrast, TheNearerOfDarkerAndLighterIsTaken) {
  // Both black and white just reach 4.5 on this grey.
  constexpr varnix::drawing::ByteColor kMiddle{0x75, 0x75, 0x75};
  const auto lighter = nearestOfHue({0xa0, 0xa0, 0xa0}, kMiddle, kLeastForText);
  const auto darker = nearestOfHue({0x50, 0x50, 0x50}, kMiddle, kLeastForText);
  ASSERT_TRUE(lighter && darker);
  EXPECT_GT(lighter->red, 0xa0);
  EXPECT_LT(darker->red, 0x50);
}

TEST(Contrast, WhatNoColorReachesIsNothing) {
  EXPECT_FALSE(nearestOfHue({255, 0, 0}, {0x80, 0x80, 0x80}, 6));
  EXPECT_FALSE(nearestOfHue(kWhite, kBlack, 21.5));
}

TEST(Contrast, EveryColorHasOneThatReachesItOnEveryGround) {
  for (int ground = 0; ground < 256; ground += 15) {
    for (int red = 0; red < 256; red += 51) {
      for (int green = 0; green < 256; green += 51) {
        for (int blue = 0; blue < 256; blue += 51) {
          auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
          const varnix::drawing::ByteColor color{byte(red), byte(green), byte(blue)};
          const varnix::drawing::ByteColor behind{byte(ground), byte(255 - ground),
                                                  byte(ground / 2)};
          const auto nearest = nearestOfHue(color, behind, kLeastForText);
          ASSERT_TRUE(nearest) << varnix::drawing::hex(color) << " on "
                               << varnix::drawing::hex(behind);
          ASSERT_GE(varnix::drawing::contrastRatio(*nearest, behind), 4.5);
          const int chroma = std::min(chromaOf(*nearest), chromaOf(color));
          if (chroma == 0) continue;
          // Rounding by half a byte turns a hue the more, the less saturated the colour is.
          ASSERT_LE(hueDistance(*nearest, color), 60.0 / chroma + 0.01)
              << varnix::drawing::hex(color) << " on " << varnix::drawing::hex(behind) << ": "
              << varnix::drawing::hex(*nearest);
        }
      }
    }
  }
}

}  // namespace
