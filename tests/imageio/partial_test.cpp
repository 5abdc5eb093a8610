// Pictures whose end is missing or damaged: existing rows are read, the rest stays empty.
#include <gtest/gtest.h>

#include <random>

#include "ImageIO/decode.h"
#include "support/image_files.h"

using host::imageio::decode;
using host::imageio::Picture;
using test::Bytes;
using test::jpegFile;
using test::JpegLook;
using test::pngFile;

namespace {

constexpr char kPartial[] = "the image is truncated or damaged: only a part of it is there";

constexpr unsigned kWidth = 20;
constexpr unsigned kHeight = 64;

Bytes noise(std::size_t length) {
  std::mt19937 random(7);
  Bytes bytes(length);
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random() | 1);
  return bytes;
}

std::string png(bool isInterlaced = false) {
  return pngFile(kWidth, kHeight,
                 {.colorType = PNG_COLOR_TYPE_RGB_ALPHA, .isInterlaced = isInterlaced},
                 noise(kWidth * kHeight * 4));
}

std::string jpeg(const JpegLook& look = {}) {
  return jpegFile(kWidth, kHeight, look, noise(kWidth * kHeight * 3));
}

/// How many rows from the top equal those of the whole picture.
unsigned soundRows(const Picture& part, const Picture& whole) {
  const std::size_t bytes = kWidth * 4;
  for (unsigned y = 0; y < kHeight; ++y) {
    if (!std::equal(&part.rgba[y * bytes], &part.rgba[y * bytes] + bytes, &whole.rgba[y * bytes]))
      return y;
  }
  return kHeight;
}

struct Part {
  unsigned rows = 0;  ///< 0 if there was no picture
  Picture picture;
};

Part partOf(const std::string& file, std::size_t length, const Picture& whole) {
  std::string problem;
  auto picture = decode(std::string_view(file).substr(0, length), &problem);
  if (!picture) {
    EXPECT_EQ(problem, "the image is truncated or damaged") << length;
    return {};
  }
  EXPECT_EQ(picture->width, kWidth);
  EXPECT_EQ(picture->height, kHeight);
  EXPECT_EQ(picture->rgba.size(), whole.rgba.size());
  if (length < file.size()) {
    EXPECT_EQ(problem, kPartial) << length;
  }
  return {soundRows(*picture, whole), *picture};
}

TEST(PartOfAPng, HasTheRowsThatAreThereAndZeros) {
  const std::string file = png();
  const Picture whole = decode(file).value_or(Picture{});
  unsigned before = 0;
  unsigned steps = 0;
  for (std::size_t length = 8; length < file.size(); ++length) {
    const Part part = partOf(file, length, whole);
    EXPECT_GE(part.rows, before) << length;
    if (part.rows > before) ++steps;
    before = part.rows;
    for (std::size_t i = part.rows * kWidth * 4; i < part.picture.rgba.size(); ++i)
      ASSERT_EQ(part.picture.rgba[i], 0) << length << ", byte " << i;
  }
  // Noise is stored uncompressed: a row is complete with its own last bytes.
  EXPECT_EQ(before, kHeight);
  EXPECT_GT(steps, kHeight / 2);
}

// No pixel of such a format can be transparent.
TEST(PartOfAPng, WithoutAlphaIsBlackWhereItIsMissing) {
  for (const bool isInterlaced : {false, true}) {
    const std::string file =
        pngFile(kWidth, kHeight, {.colorType = PNG_COLOR_TYPE_RGB, .isInterlaced = isInterlaced},
                noise(kWidth * kHeight * 3));
    unsigned parts = 0;
    for (std::size_t length = 8; length < file.size(); ++length) {
      const auto part = decode(std::string_view(file).substr(0, length));
      if (!part) continue;
      ++parts;
      for (std::size_t pixel = 3; pixel < part->rgba.size(); pixel += 4)
        ASSERT_EQ(part->rgba[pixel], 255) << length << ", byte " << pixel;
    }
    EXPECT_GT(parts, file.size() / 2);
  }
}

TEST(PartOfAPng, DamageEndsIt) {
  std::string file = png();
  const Picture whole = decode(file).value_or(Picture{});
  file[file.size() / 2] = static_cast<char>(~file[file.size() / 2]);
  std::string problem;
  EXPECT_TRUE(decode(file, &problem));
  EXPECT_EQ(problem, kPartial);
}

TEST(PartOfAPng, AnInterlacedOneIsCoarse) {
  const std::string file = png(true);
  const Picture whole = decode(file).value_or(Picture{});
  ASSERT_EQ(whole.rgba, noise(kWidth * kHeight * 4));
  std::string problem;
  const auto half = decode(std::string_view(file).substr(0, file.size() / 2), &problem);
  ASSERT_TRUE(half);
  EXPECT_EQ(problem, kPartial);
  EXPECT_LT(soundRows(*half, whole), kHeight / 2);
  // The pixels of the first passes, repeated in place of their neighbours.
  EXPECT_TRUE(std::equal(&half->rgba[0], &half->rgba[4], &whole.rgba[0]));
  EXPECT_EQ(std::count(half->rgba.begin(), half->rgba.end(), 0), 0);
}

TEST(PartOfAJpeg, HasTheBlocksThatAreThere) {
  const std::string file = jpeg();
  const Picture whole = decode(file).value_or(Picture{});
  unsigned before = 0;
  for (std::size_t length = 4; length < file.size(); ++length) {
    const unsigned blocks = partOf(file, length, whole).rows / 8;
    EXPECT_GE(blocks, before) << length;
    before = blocks;
  }
  EXPECT_EQ(before, kHeight / 8);
  EXPECT_EQ(partOf(file, file.size() / 16, whole).rows, 0U);
  EXPECT_GE(partOf(file, file.size() / 2, whole).rows, kHeight / 4);
  EXPECT_LT(partOf(file, file.size() / 2, whole).rows, kHeight);
}

TEST(PartOfAJpeg, OfSeveralScansIsCoarse) {
  const std::string file = jpeg({.isProgressive = true});
  const Picture whole = decode(file).value_or(Picture{});
  std::string problem;
  const auto half = decode(std::string_view(file).substr(0, file.size() / 2), &problem);
  ASSERT_TRUE(half);
  EXPECT_EQ(problem, kPartial);
  EXPECT_EQ(half->rgba.size(), whole.rgba.size());
  EXPECT_NE(half->rgba, whole.rgba);
}

}  // namespace
