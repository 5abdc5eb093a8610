// Broken pictures are refused with a reason, quickly, and without output on the terminal.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <random>

#include "ImageIO/decode.h"
#include "support/image_files.h"

using host::imageio::decode;
using test::Bytes;
using test::jpegFile;
using test::JpegLook;
using test::pngFile;

namespace {

using Clock = std::chrono::steady_clock;

constexpr char kDamaged[] = "the image is truncated or damaged";
constexpr char kPartial[] = "the image is truncated or damaged: only a part of it is there";

/// Empty if the whole file was decoded.
std::string reason(const std::string& file) {
  std::string why = "unset";
  const bool isThere = decode(file, &why).has_value();
  EXPECT_EQ(isThere, why.empty() || why == kPartial);
  return why;
}

Bytes noise(std::size_t length) {
  std::mt19937 random(5);
  Bytes bytes(length);
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

std::string smallPng(bool isInterlaced = false) {
  return pngFile(9, 7, {.colorType = PNG_COLOR_TYPE_RGB_ALPHA, .isInterlaced = isInterlaced},
                 noise(9 * 7 * 4));
}

std::string smallJpeg(const JpegLook& look = {}) {
  return jpegFile(17, 19, look, noise(std::size_t{17} * 19 * 3));
}

std::vector<std::string> smallFiles() {
  return {
      smallPng(),
      smallPng(true),
      pngFile(9, 7, {.colorType = PNG_COLOR_TYPE_PALETTE, .palette = {{1, 2, 3}, {4, 5, 6}}},
              Bytes(63, 1)),
      smallJpeg(),
      smallJpeg({.isProgressive = true}),
      smallJpeg({.restartRows = 1, .hasFullColor = false}),
      jpegFile(8, 8, {.given = JCS_CMYK, .stored = JCS_YCCK, .hasAdobeMarker = true}, noise(256))};
}

std::uint32_t checksum(std::string_view bytes) {
  std::uint32_t sum = ~0U;
  for (char byte : bytes) {
    sum ^= static_cast<std::uint8_t>(byte);
    for (int bit = 0; bit < 8; ++bit) sum = sum >> 1 ^ (sum % 2 != 0 ? 0xedb88320 : 0);
  }
  return ~sum;
}

std::string bigEndian(std::uint32_t number) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(number >> shift);
  return bytes;
}

/// A valid header with that size, and too few pixels.
std::string pngOfSize(unsigned width, unsigned height, bool isInterlaced = false) {
  std::string file = smallPng(isInterlaced);
  file.replace(16, 8, bigEndian(width) + bigEndian(height));
  return file.replace(29, 4, bigEndian(checksum(std::string_view(file).substr(12, 17))));
}

std::string jpegOfSize(unsigned width, unsigned height, const JpegLook& look = {}) {
  std::string file = smallJpeg(look);
  const std::size_t frame = file.find(look.isProgressive ? "\xff\xc2" : "\xff\xc0");
  EXPECT_NE(frame, file.npos);
  file[frame + 5] = static_cast<char>(height >> 8);
  file[frame + 6] = static_cast<char>(height);
  file[frame + 7] = static_cast<char>(width >> 8);
  file[frame + 8] = static_cast<char>(width);
  return file;
}

TEST(HostileImage, TheSmallFilesAreSound) {
  for (const std::string& file : smallFiles()) EXPECT_EQ(reason(file), "");
  EXPECT_EQ(reason(pngOfSize(9, 7)), "");
  EXPECT_TRUE(decode(smallPng()));  // the reason is optional
  EXPECT_FALSE(decode("x"));
}

TEST(HostileImage, WhatIsNoImage) {
  for (const std::string& bytes :
       {std::string(), std::string("x"), std::string("GIF89a"), std::string(1000, '\0'),
        std::string("\x89PNG"), std::string("\xff\xd8"), std::string("<html>")}) {
    EXPECT_EQ(reason(bytes), "not a PNG or JPEG image");
  }
}

TEST(HostileImage, TruncatedAnywhere) {
  for (const std::string& file : smallFiles()) {
    for (std::size_t length = 8; length < file.size(); ++length) {
      EXPECT_THAT(reason(file.substr(0, length)), testing::AnyOf(kDamaged, kPartial))
          << length << " of " << file.size();
    }
  }
}

TEST(HostileImage, EveryDamagedByteOfAPngIsNoticed) {
  const std::string file = smallPng();
  for (std::size_t i = 8; i < file.size(); ++i) {
    std::string damaged = file;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
    EXPECT_NE(reason(damaged), "") << i;
  }
}

TEST(HostileImage, NoPixels) {
  for (const std::string& file :
       {pngOfSize(0, 7), pngOfSize(9, 0), pngOfSize(0, 0), jpegOfSize(0, 19), jpegOfSize(17, 0)}) {
    EXPECT_EQ(reason(file), "the image has no pixels");
  }
}

TEST(HostileImage, TooLarge) {
  EXPECT_EQ(reason(pngOfSize(60'000, 60'000)),
            "the image is too large (60000 x 60000; 100000000 pixels at most)");
  EXPECT_EQ(reason(pngOfSize(65'536, 1)),
            "the image is too large (65536 x 1; a side has 65535 pixels at most)");
  EXPECT_EQ(reason(pngOfSize(4'294'967'295, 4'294'967'295)),
            "the image is too large (4294967295 x 4294967295; a side has 65535 pixels at most)");
  EXPECT_EQ(reason(jpegOfSize(60'000, 60'000)),
            "the image is too large (60000 x 60000; 100000000 pixels at most)");
  EXPECT_EQ(reason(jpegOfSize(10'001, 10'000)),
            "the image is too large (10001 x 10000; 100000000 pixels at most)");
  // More than the JPEG library accepts.
  EXPECT_EQ(reason(jpegOfSize(65'535, 65'535)),
            "the image is too large (65535 x 65535; a side has 65500 pixels at most)");
  EXPECT_EQ(reason(jpegOfSize(65'535, 1)),
            "the image is too large (65535 x 1; a side has 65500 pixels at most)");
}

TEST(HostileImage, LargeClaimsOfFewBytesAreSoonOver) {
  const auto start = Clock::now();
  for (int i = 0; i < 20; ++i) {
    EXPECT_EQ(reason(pngOfSize(10'000, 10'000)), kDamaged);
    EXPECT_EQ(reason(pngOfSize(10'000, 10'000, true)), kDamaged);
    EXPECT_EQ(reason(jpegOfSize(10'000, 10'000)), kDamaged);
  }
  EXPECT_LT(Clock::now() - start, std::chrono::seconds(5));
}

TEST(HostileImage, UnsupportedKinds) {
  // 12 bits a sample.
  std::string file = smallJpeg();
  file[file.find("\xff\xc0") + 4] = 12;
  EXPECT_EQ(reason(file), "the image is of a kind that is not supported");
  // Lossless: a different coder.
  file = smallJpeg();
  file[file.find("\xff\xc0") + 1] = '\xc3';
  EXPECT_EQ(reason(file), "the image is of a kind that is not supported");
}

TEST(HostileImage, ScansWithoutEnd) {
  EXPECT_EQ(reason(smallJpeg({.hasManyScans = true})), "the image has too many scans");
}

TEST(HostileImage, FlippedBits) {
  std::mt19937 random(11);
  const std::vector<std::string> files = smallFiles();
  const auto end = Clock::now() + std::chrono::seconds(10);
  int refused = 0;
  for (int i = 0; i < 6000 && Clock::now() < end; ++i) {
    std::string file = files[static_cast<std::size_t>(i) % files.size()];
    for (unsigned flips = 1 + random() % 4; flips > 0; --flips) {
      file[random() % file.size()] ^= static_cast<char>(1U << random() % 8);
    }
    std::string why;
    const auto picture = decode(file, &why);
    if (picture) {
      EXPECT_TRUE(why.empty() || why == kPartial) << why;
      EXPECT_EQ(picture->rgba.size(), std::size_t{picture->width} * picture->height * 4);
    } else {
      EXPECT_NE(why, "");
      ++refused;
    }
  }
  EXPECT_GT(refused, 0);
}

TEST(HostileImage, NothingIsPrinted) {
  testing::internal::CaptureStderr();
  testing::internal::CaptureStdout();
  for (const std::string& file : smallFiles()) {
    reason(file.substr(0, file.size() - 3));
    std::string damaged = file;
    damaged[file.size() / 2] = '\xff';
    reason(damaged);
  }
  reason(jpegOfSize(17, 0));
  // A transparent colour in a picture with alpha makes the library warn.
  const std::string chunk("tRNS\0\0", 6);
  EXPECT_EQ(reason(smallPng().insert(33, bigEndian(2) + chunk + bigEndian(checksum(chunk)))), "");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
}

}  // namespace
