// Reading and writing PNG: every kind of pixel in the format, exactly.
#include <gtest/gtest.h>

#include "ImageIO/decode.h"
#include "support/image_files.h"

using host::imageio::decode;
using host::imageio::encodePng;
using host::imageio::Picture;
using test::Bytes;
using test::pngFile;
using test::PngLook;

namespace {

Picture decoded(const std::string& file) {
  std::string why;
  const auto picture = decode(file, &why);
  EXPECT_TRUE(picture.has_value()) << why;
  return picture.value_or(Picture{});
}

Bytes pixels(unsigned width, unsigned height, const PngLook& look, const Bytes& packed) {
  const Picture picture = decoded(pngFile(width, height, look, packed));
  EXPECT_EQ(picture.width, width);
  EXPECT_EQ(picture.height, height);
  EXPECT_EQ(picture.orientation, 0);
  return picture.rgba;
}

TEST(Png, RedGreenBlueAlphaAsTheyStand) {
  const Bytes rgba = {255, 0, 0, 255, 1, 2, 3, 0, 10, 128, 200, 127, 9, 8, 7, 1};
  const Picture picture = decoded(pngFile(2, 2, {.colorType = PNG_COLOR_TYPE_RGB_ALPHA}, rgba));
  EXPECT_EQ(picture.rgba, rgba);
  EXPECT_TRUE(picture.hasAlpha);
}

TEST(Png, RedGreenBlue) {
  const Picture picture =
      decoded(pngFile(2, 1, {.colorType = PNG_COLOR_TYPE_RGB}, {1, 2, 3, 200, 100, 50}));
  EXPECT_EQ(picture.rgba, (Bytes{1, 2, 3, 255, 200, 100, 50, 255}));
  EXPECT_FALSE(picture.hasAlpha);
}

TEST(Png, OneColourOfRedGreenBlueTransparent) {
  const PngLook look = {.colorType = PNG_COLOR_TYPE_RGB,
                        .transparent = png_color_16{0, 1, 2, 3, 0}};
  const Picture picture = decoded(pngFile(2, 1, look, {1, 2, 3, 1, 2, 4}));
  EXPECT_EQ(picture.rgba, (Bytes{1, 2, 3, 0, 1, 2, 4, 255}));
  EXPECT_TRUE(picture.hasAlpha);
}

TEST(Png, GreysOfEveryDepth) {
  EXPECT_EQ(pixels(3, 1, {.colorType = PNG_COLOR_TYPE_GRAY, .bitDepth = 1}, {0b1010'0000}),
            (Bytes{255, 255, 255, 255, 0, 0, 0, 255, 255, 255, 255, 255}));
  EXPECT_EQ(pixels(3, 1, {.colorType = PNG_COLOR_TYPE_GRAY, .bitDepth = 2}, {0b0110'1100}),
            (Bytes{85, 85, 85, 255, 170, 170, 170, 255, 255, 255, 255, 255}));
  EXPECT_EQ(pixels(2, 1, {.colorType = PNG_COLOR_TYPE_GRAY, .bitDepth = 4}, {0x1e}),
            (Bytes{17, 17, 17, 255, 238, 238, 238, 255}));
  EXPECT_EQ(pixels(2, 1, {.colorType = PNG_COLOR_TYPE_GRAY}, {7, 99}),
            (Bytes{7, 7, 7, 255, 99, 99, 99, 255}));
}

TEST(Png, OneGreyTransparent) {
  const PngLook look = {
      .colorType = PNG_COLOR_TYPE_GRAY, .bitDepth = 4, .transparent = png_color_16{0, 0, 0, 0, 14}};
  const Picture picture = decoded(pngFile(2, 1, look, {0x1e}));
  EXPECT_EQ(picture.rgba, (Bytes{17, 17, 17, 255, 238, 238, 238, 0}));
  EXPECT_TRUE(picture.hasAlpha);
}

TEST(Png, GreyWithAlpha) {
  EXPECT_EQ(pixels(2, 1, {.colorType = PNG_COLOR_TYPE_GRAY_ALPHA}, {7, 8, 99, 255}),
            (Bytes{7, 7, 7, 8, 99, 99, 99, 255}));
}

TEST(Png, PalettesOfEveryDepth) {
  PngLook look = {.colorType = PNG_COLOR_TYPE_PALETTE, .bitDepth = 1, .palette = {}};
  look.palette = {{1, 2, 3}, {40, 50, 60}};
  const Bytes second = {40, 50, 60, 255};
  EXPECT_EQ(pixels(2, 1, look, {0b0100'0000}), (Bytes{1, 2, 3, 255, 40, 50, 60, 255}));
  look.bitDepth = 2;
  EXPECT_EQ(pixels(1, 1, look, {0b0100'0000}), second);
  look.bitDepth = 4;
  EXPECT_EQ(pixels(1, 1, look, {0x10}), second);
  look.bitDepth = 8;
  EXPECT_EQ(pixels(1, 1, look, {1}), second);
}

TEST(Png, APaletteWithAlpha) {
  PngLook look = {.colorType = PNG_COLOR_TYPE_PALETTE, .bitDepth = 2, .palette = {}};
  look.palette = {{1, 2, 3}, {4, 5, 6}, {7, 8, 9}};
  look.paletteAlpha = {0, 77};
  const Picture picture = decoded(pngFile(3, 1, look, {0b0001'1000}));
  EXPECT_EQ(picture.rgba, (Bytes{1, 2, 3, 0, 4, 5, 6, 77, 7, 8, 9, 255}));
  EXPECT_TRUE(picture.hasAlpha);
}

TEST(Png, AnIndexBeyondThePaletteIsStillAPixel) {
  PngLook look = {.colorType = PNG_COLOR_TYPE_PALETTE, .palette = {}};
  look.palette = {{1, 2, 3}, {4, 5, 6}};
  EXPECT_EQ(pixels(2, 1, look, {150, 1}), (Bytes{0, 0, 0, 255, 4, 5, 6, 255}));
}

TEST(Png, SixteenBitsAreRounded) {
  Bytes packed;
  Bytes expected;
  for (unsigned value = 0; value < 65536; ++value) {
    packed.insert(packed.end(),
                  {static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)});
    const auto byte = static_cast<std::uint8_t>((value * 255 + 32767) / 65535);
    expected.insert(expected.end(), {byte, byte, byte, 255});
  }
  EXPECT_EQ(pixels(256, 256, {.colorType = PNG_COLOR_TYPE_GRAY, .bitDepth = 16}, packed), expected);
}

TEST(Png, SixteenBitsOfFourChannels) {
  EXPECT_EQ(pixels(1, 1, {.colorType = PNG_COLOR_TYPE_RGB_ALPHA, .bitDepth = 16},
                   {0x12, 0x34, 0x80, 0x00, 0xff, 0xff, 0x00, 0x80}),
            (Bytes{0x12, 0x80, 0xff, 0}));
  // The transparent colour is compared in all its bits.
  EXPECT_EQ(pixels(2, 1,
                   {.colorType = PNG_COLOR_TYPE_RGB,
                    .bitDepth = 16,
                    .transparent = png_color_16{0, 0x1234, 0, 0, 0}},
                   {0x12, 0x34, 0, 0, 0, 0, 0x12, 0x35, 0, 0, 0, 0}),
            (Bytes{0x12, 0, 0, 0, 0x12, 0, 0, 255}));
}

TEST(Png, InterlacedPicturesOfEverySmallSize) {
  for (unsigned width = 1; width <= 9; ++width) {
    for (unsigned height = 1; height <= 9; ++height) {
      Bytes rgba;
      for (unsigned i = 0; i < width * height * 4; ++i) {
        rgba.push_back(static_cast<std::uint8_t>(i * 37 + 11));
      }
      EXPECT_EQ(pixels(width, height, {.colorType = PNG_COLOR_TYPE_RGB_ALPHA, .isInterlaced = true},
                       rgba),
                rgba)
          << width << " x " << height;
    }
  }
}

TEST(Png, WhatFollowsTheEndIsIgnored) {
  const std::string file = test::plainPng(3, 10, 20, 30);
  EXPECT_EQ(decoded(file + "trailing garbage").rgba, decoded(file).rgba);
}

TEST(Png, WrittenFilesComeBackExactly) {
  Picture picture{.width = 3, .height = 2, .hasAlpha = true, .orientation = 0, .rgba = {}};
  for (unsigned i = 0; i < 24; ++i) picture.rgba.push_back(static_cast<std::uint8_t>(i * 11));
  auto file = encodePng(picture);
  ASSERT_TRUE(file);
  Picture back = decoded(*file);
  EXPECT_EQ(back.rgba, picture.rgba);
  EXPECT_TRUE(back.hasAlpha);

  picture.hasAlpha = false;
  file = encodePng(picture);
  ASSERT_TRUE(file);
  back = decoded(*file);
  EXPECT_FALSE(back.hasAlpha);
  for (std::size_t i = 3; i < picture.rgba.size(); i += 4) picture.rgba[i] = 255;
  EXPECT_EQ(back.rgba, picture.rgba);
}

TEST(Png, APictureThatIsNoneIsNotWritten) {
  EXPECT_FALSE(encodePng({}));
  EXPECT_FALSE(encodePng({.width = 2, .height = 2, .rgba = Bytes(15)}));
  EXPECT_FALSE(encodePng({.width = 2, .height = 0, .rgba = {}}));
  EXPECT_FALSE(encodePng({.width = 60'000, .height = 60'000, .rgba = Bytes(4)}));
}

}  // namespace
