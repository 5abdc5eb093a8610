// Reading and writing JPEG: every way of storing pixels that real files use, with small tolerances.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>

#include "ImageIO/decode.h"
#include "support/image_files.h"

using host::imageio::decode;
using host::imageio::encodeJpeg;
using host::imageio::Picture;
using test::Bytes;
using test::jpegFile;
using test::JpegLook;

namespace {

constexpr unsigned kWidth = 37;
constexpr unsigned kHeight = 29;

/// A soft gradient: red grows to the right, green downwards.
Bytes gradient() {
  Bytes rgb;
  for (unsigned y = 0; y < kHeight; ++y) {
    for (unsigned x = 0; x < kWidth; ++x) {
      rgb.insert(rgb.end(), {static_cast<std::uint8_t>(x * 6), static_cast<std::uint8_t>(y * 8),
                             static_cast<std::uint8_t>(120)});
    }
  }
  return rgb;
}

Bytes opaque(const Bytes& rgb) {
  Bytes rgba;
  for (std::size_t i = 0; i < rgb.size(); i += 3) {
    rgba.insert(rgba.end(), {rgb[i], rgb[i + 1], rgb[i + 2], 255});
  }
  return rgba;
}

int largestDifference(const Bytes& a, const Bytes& b) {
  if (a.size() != b.size()) return 256;
  int largest = 0;
  for (std::size_t i = 0; i < a.size(); ++i) largest = std::max(largest, std::abs(a[i] - b[i]));
  return largest;
}

Picture decoded(const std::string& file) {
  std::string why;
  const auto picture = decode(file, &why);
  EXPECT_TRUE(picture.has_value()) << why;
  return picture.value_or(Picture{});
}

void expectGradient(const JpegLook& look, int tolerance) {
  const Picture picture = decoded(jpegFile(kWidth, kHeight, look, gradient()));
  EXPECT_EQ(picture.width, kWidth);
  EXPECT_EQ(picture.height, kHeight);
  EXPECT_FALSE(picture.hasAlpha);
  EXPECT_EQ(picture.orientation, 0);
  EXPECT_LE(largestDifference(picture.rgba, opaque(gradient())), tolerance);
}

TEST(Jpeg, Baseline) { expectGradient({}, 3); }
TEST(Jpeg, Progressive) { expectGradient({.isProgressive = true}, 3); }
TEST(Jpeg, RestartMarkers) { expectGradient({.restartRows = 1}, 3); }
TEST(Jpeg, CoarseColour) { expectGradient({.hasFullColor = false}, 12); }
TEST(Jpeg, PlainRedGreenBlue) { expectGradient({.stored = JCS_RGB}, 3); }

TEST(Jpeg, Grey) {
  const Picture picture = decoded(jpegFile(
      16, 16, {.given = JCS_GRAYSCALE, .stored = JCS_GRAYSCALE}, Bytes(std::size_t{16} * 16, 77)));
  ASSERT_EQ(picture.rgba.size(), 16U * 16 * 4);
  for (std::size_t i = 0; i < picture.rgba.size(); i += 4) {
    EXPECT_NEAR(picture.rgba[i], 77, 1);
    EXPECT_EQ(picture.rgba[i], picture.rgba[i + 1]);
    EXPECT_EQ(picture.rgba[i], picture.rgba[i + 2]);
    EXPECT_EQ(picture.rgba[i + 3], 255);
  }
}

/// A JPEG file of 8 x 8 pixels with four inks.
Bytes ofInks(const JpegLook& look, const std::array<std::uint8_t, 4>& inks) {
  Bytes samples;
  for (int i = 0; i < 64; ++i) samples.insert(samples.end(), inks.begin(), inks.end());
  Bytes rgba = decoded(jpegFile(8, 8, look, samples)).rgba;
  rgba.resize(4);
  return rgba;
}

TEST(Jpeg, FourInks) {
  const JpegLook plain = {.given = JCS_CMYK, .stored = JCS_CMYK};
  const JpegLook adobe = {.given = JCS_CMYK, .stored = JCS_CMYK, .hasAdobeMarker = true};
  const JpegLook mixed = {.given = JCS_CMYK, .stored = JCS_YCCK, .hasAdobeMarker = true};
  // No cyan, some magenta, full yellow, a little black.
  const Bytes expected = {204, 122, 0, 255};
  EXPECT_LE(largestDifference(ofInks(plain, {0, 102, 255, 51}), expected), 2);
  EXPECT_LE(largestDifference(ofInks(adobe, {255, 153, 0, 204}), expected), 2);
  EXPECT_LE(largestDifference(ofInks(mixed, {255, 153, 0, 204}), expected), 2);
  EXPECT_EQ(ofInks(plain, {0, 0, 0, 0}), (Bytes{255, 255, 255, 255}));
  EXPECT_EQ(ofInks(adobe, {0, 0, 0, 0}), (Bytes{0, 0, 0, 255}));
}

/// The contents of an Exif segment with one entry.
std::string exif(bool isBigEndian, unsigned format, unsigned orientation) {
  auto number = [&](unsigned value, int size) {
    std::string bytes;
    for (int i = 0; i < size; ++i) {
      bytes += static_cast<char>(value >> (8 * (isBigEndian ? size - 1 - i : i)));
    }
    return bytes;
  };
  std::string value = format == 3 ? number(orientation, 2) + number(0, 2) : number(orientation, 4);
  return std::string("Exif\0\0", 6) + (isBigEndian ? "MM" : "II") + number(42, 2) + number(8, 4) +
         number(1, 2) + number(0x0112, 2) + number(format, 2) + number(1, 4) + value + number(0, 4);
}

int orientationOf(std::string segment) {
  return decoded(jpegFile(kWidth, kHeight, {.app1 = std::move(segment)}, gradient())).orientation;
}

TEST(Jpeg, OrientationsOfExif) {
  constexpr std::array<int, 8> kExpected = {0, 4, 1, 5, 6, 3, 7, 2};
  for (unsigned value = 1; value <= 8; ++value) {
    EXPECT_EQ(orientationOf(exif(false, 3, value)), kExpected[value - 1]) << value;
    EXPECT_EQ(orientationOf(exif(true, 3, value)), kExpected[value - 1]) << value;
  }
}

TEST(Jpeg, OrientationsThatMakeNoSense) {
  for (unsigned value : {0U, 9U, 255U, 65535U}) EXPECT_EQ(orientationOf(exif(true, 3, value)), 0);
  EXPECT_EQ(orientationOf(exif(true, 2, 0x36363636)), 0);  // text
  EXPECT_EQ(orientationOf(exif(false, 4, 6)), 0);          // a long number
  EXPECT_EQ(orientationOf("http://ns.adobe.com/xap/1.0/ not Exif"), 0);
  EXPECT_EQ(orientationOf("Exif"), 0);
}

TEST(Jpeg, DamagedExifIsNoOrientationAndNoHarm) {
  const std::string whole = exif(true, 3, 6);
  for (std::size_t length = 1; length < whole.size() - 8; ++length) {
    EXPECT_EQ(orientationOf(whole.substr(0, length)), 0) << length;
  }
  for (std::size_t i = 6; i < whole.size(); ++i) {
    std::string damaged = whole;
    damaged[i] = '\xff';
    const int orientation = orientationOf(damaged);
    EXPECT_TRUE(orientation == 0 || orientation == 3) << i;
  }
}

Picture sample(bool hasAlpha) {
  return {.width = kWidth,
          .height = kHeight,
          .hasAlpha = hasAlpha,
          .orientation = 0,
          .rgba = opaque(gradient())};
}

TEST(Jpeg, WrittenFilesComeBackClosely) {
  const auto file = encodeJpeg(sample(false), 1);
  ASSERT_TRUE(file);
  EXPECT_LE(largestDifference(decoded(*file).rgba, opaque(gradient())), 3);
}

TEST(Jpeg, FineColoursAtHighQuality) {
  // Red and blue columns: coarse storage loses half of the colours.
  Picture stripes{.width = 16, .height = 16, .rgba = {}};
  for (unsigned i = 0; i < 256; ++i) {
    const bool isRed = i % 2 == 0;
    stripes.rgba.insert(stripes.rgba.end(), {static_cast<std::uint8_t>(isRed ? 255 : 0), 0,
                                             static_cast<std::uint8_t>(isRed ? 0 : 255), 255});
  }
  EXPECT_LE(largestDifference(decoded(encodeJpeg(stripes, 1).value_or("")).rgba, stripes.rgba), 6);
  EXPECT_GT(largestDifference(decoded(encodeJpeg(stripes, 0.5).value_or("")).rgba, stripes.rgba),
            60);
}

TEST(Jpeg, QualityDecidesTheSize) {
  const auto size = [](double quality) {
    return encodeJpeg(sample(false), quality).value_or("").size();
  };
  EXPECT_GT(size(1), size(0.7));
  EXPECT_GT(size(0.7), size(0.2));
  EXPECT_EQ(size(7), size(1));
  EXPECT_EQ(size(-3), size(0));
  EXPECT_EQ(size(std::numeric_limits<double>::quiet_NaN()), size(0));
}

TEST(Jpeg, TransparentPartsLieOnWhite) {
  Picture picture{.width = 8, .height = 8, .hasAlpha = true, .rgba = Bytes(256, 0)};
  Bytes pixel = decoded(encodeJpeg(picture, 1).value_or("")).rgba;
  EXPECT_EQ(Bytes(pixel.begin(), pixel.begin() + 4), (Bytes{255, 255, 255, 255}));
  for (std::size_t i = 3; i < picture.rgba.size(); i += 4) picture.rgba[i] = 51;
  pixel = decoded(encodeJpeg(picture, 1).value_or("")).rgba;
  EXPECT_LE(largestDifference(Bytes(pixel.begin(), pixel.begin() + 4), {204, 204, 204, 255}), 1);
  // Without alpha the fourth byte means nothing.
  picture.hasAlpha = false;
  pixel = decoded(encodeJpeg(picture, 1).value_or("")).rgba;
  EXPECT_EQ(Bytes(pixel.begin(), pixel.begin() + 4), (Bytes{0, 0, 0, 255}));
}

TEST(Jpeg, TheOrientationIsKept) {
  Picture picture = sample(false);
  for (int orientation = 0; orientation < 8; ++orientation) {
    picture.orientation = orientation;
    EXPECT_EQ(decoded(encodeJpeg(picture, 0.8).value_or("")).orientation, orientation);
  }
  picture.orientation = 99;
  EXPECT_EQ(decoded(encodeJpeg(picture, 0.8).value_or("")).orientation, 0);
}

TEST(Jpeg, APictureThatIsNoneIsNotWritten) {
  EXPECT_FALSE(encodeJpeg({}, 1));
  EXPECT_FALSE(encodeJpeg({.width = 2, .height = 2, .rgba = Bytes(15)}, 1));
  EXPECT_FALSE(encodeJpeg({.width = 60'000, .height = 60'000, .rgba = Bytes(4)}, 1));
  // More than this format can hold, but not more than the other one.
  EXPECT_FALSE(
      encodeJpeg({.width = 65'535, .height = 1, .rgba = Bytes(std::size_t{65'535} * 4)}, 1));
}

TEST(Jpeg, WhatFollowsTheEndIsIgnored) {
  const std::string file = jpegFile(kWidth, kHeight, {}, gradient());
  EXPECT_EQ(decoded(file + "trailing garbage").rgba, decoded(file).rgba);
}

}  // namespace
