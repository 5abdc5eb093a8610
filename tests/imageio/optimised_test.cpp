// PNG in the form that applications on the device contain, made here from ordinary files.
#include <gtest/gtest.h>

#include <zlib.h>

#include <random>

#include "ImageIO/decode.h"
#include "support/image_files.h"

using host::imageio::decode;
using host::imageio::Picture;
using test::Bytes;
using test::pngFile;

namespace {

constexpr char kDamaged[] = "the image is truncated or damaged";
constexpr char kPartial[] = "the image is truncated or damaged: only a part of it is there";

std::string number(std::uint32_t value) {
  std::string bytes;
  for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift);
  return bytes;
}

std::string chunk(const std::string& name, const std::string& data) {
  const std::string summed = name + data;
  const auto sum = crc32_z(0, reinterpret_cast<const Bytef*>(summed.data()), summed.size());
  return number(static_cast<std::uint32_t>(data.size())) + summed +
         number(static_cast<std::uint32_t>(sum));
}

/// A stream's raw data, without zlib's header and checksum.
std::string deflated(const Bytes& bytes) {
  z_stream stream{};
  deflateInit2(&stream, 9, Z_DEFLATED, -15, 8, Z_DEFAULT_STRATEGY);
  std::string out(deflateBound(&stream, bytes.size()), '\0');
  stream.next_in = const_cast<Bytef*>(bytes.data());
  stream.avail_in = static_cast<uInt>(bytes.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

/// The rows are as in the file, blue first. The data is split into chunks of that many bytes.
std::string optimised(unsigned width, unsigned height, int colorType, const Bytes& packed,
                      std::size_t chunkBytes = SIZE_MAX) {
  Bytes filtered;
  const std::size_t rowBytes = packed.size() / height;
  for (unsigned y = 0; y < height; ++y) {
    filtered.push_back(0);
    filtered.insert(filtered.end(), packed.begin() + static_cast<std::ptrdiff_t>(y * rowBytes),
                    packed.begin() + static_cast<std::ptrdiff_t>((y + 1) * rowBytes));
  }
  const std::string data = deflated(filtered);
  std::string file = "\x89PNG\r\n\x1a\n" + chunk("CgBI", std::string("\x50\0\x20\x02", 4)) +
                     chunk("IHDR", number(width) + number(height) + '\x08' +
                                       static_cast<char>(colorType) + std::string(3, '\0'));
  for (std::size_t at = 0; at < data.size(); at += std::min(chunkBytes, data.size() - at))
    file += chunk("IDAT", data.substr(at, chunkBytes));
  return file + chunk("IEND", "");
}

Bytes noise(std::size_t length) {
  std::mt19937 random(3);
  Bytes bytes(length);
  for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
  return bytes;
}

struct Outcome {
  std::optional<Picture> picture;
  std::string problem;
};
Outcome read(std::string_view file) {
  Outcome outcome;
  outcome.picture = decode(file, &outcome.problem);
  return outcome;
}

TEST(OptimisedPng, ColoursComeBackInTheirOrderAndStraight) {
  // Blue, green, red, alpha; premultiplied.
  const Bytes packed = {30, 20, 10, 255, 0, 0, 128, 128, 0, 0, 0, 0, 1, 2, 3, 3};
  const auto [picture, problem] = read(optimised(2, 2, PNG_COLOR_TYPE_RGB_ALPHA, packed));
  ASSERT_TRUE(picture);
  EXPECT_EQ(problem, "");
  EXPECT_EQ(picture->width, 2U);
  EXPECT_EQ(picture->height, 2U);
  EXPECT_TRUE(picture->hasAlpha);
  EXPECT_EQ(picture->rgba, (Bytes{10, 20, 30, 255, 255, 0, 0, 128, 0, 0, 0, 0, 255, 170, 85, 3}));
}

TEST(OptimisedPng, ColoursBeyondTheirAlphaAreFull) {
  const auto [picture, problem] = read(optimised(1, 1, PNG_COLOR_TYPE_RGB_ALPHA, {200, 9, 10, 10}));
  ASSERT_TRUE(picture);
  EXPECT_EQ(picture->rgba, (Bytes{255, 230, 255, 10}));
}

TEST(OptimisedPng, WithoutAlphaOnlyTheOrderDiffers) {
  const auto [picture, problem] = read(optimised(2, 1, PNG_COLOR_TYPE_RGB, {1, 2, 3, 40, 50, 60}));
  ASSERT_TRUE(picture);
  EXPECT_EQ(problem, "");
  EXPECT_FALSE(picture->hasAlpha);
  EXPECT_EQ(picture->rgba, (Bytes{3, 2, 1, 255, 60, 50, 40, 255}));
}

TEST(OptimisedPng, GreysAreGreys) {
  const auto [picture, problem] = read(optimised(2, 1, PNG_COLOR_TYPE_GRAY, {7, 200}));
  ASSERT_TRUE(picture);
  EXPECT_EQ(problem, "");
  EXPECT_EQ(picture->rgba, (Bytes{7, 7, 7, 255, 200, 200, 200, 255}));
}

TEST(OptimisedPng, DataInManyChunks) {
  const Bytes packed = noise(std::size_t{37} * 29 * 3);
  const Bytes whole = read(optimised(37, 29, PNG_COLOR_TYPE_RGB, packed)).picture->rgba;
  for (const std::size_t bytes : {1UL, 2UL, 3UL, 100UL}) {
    const auto [picture, problem] = read(optimised(37, 29, PNG_COLOR_TYPE_RGB, packed, bytes));
    ASSERT_TRUE(picture) << bytes;
    EXPECT_EQ(problem, "") << bytes;
    EXPECT_EQ(picture->rgba, whole) << bytes;
  }
}

TEST(OptimisedPng, CutAnywhereItIsAPartOrNone) {
  const std::string file =
      optimised(20, 30, PNG_COLOR_TYPE_RGB, noise(std::size_t{20} * 30 * 3), 500);
  const Bytes whole = read(file).picture->rgba;
  bool wasPart = false;
  for (std::size_t length = 8; length < file.size(); ++length) {
    const auto [picture, problem] = read(std::string_view(file).substr(0, length));
    if (!picture) {
      EXPECT_EQ(problem, kDamaged) << length;
      EXPECT_FALSE(wasPart) << length;
      continue;
    }
    wasPart = true;
    if (problem.empty()) EXPECT_EQ(picture->rgba, whole) << length;
    else EXPECT_EQ(problem, kPartial) << length;
  }
  EXPECT_TRUE(wasPart);
}

TEST(OptimisedPng, DamageIsNoticed) {
  const std::string file = optimised(9, 7, PNG_COLOR_TYPE_RGB, noise(std::size_t{9} * 7 * 3), 60);
  const Bytes whole = read(file).picture->rgba;
  // From the header chunk on: nobody reads the contents of the first one.
  for (std::size_t i = 24; i < file.size(); ++i) {
    std::string damaged = file;
    damaged[i] = static_cast<char>(damaged[i] ^ 0x10);
    const auto [picture, problem] = read(damaged);
    if (problem.empty()) {
      EXPECT_EQ(picture->rgba, whole) << i;
    }
  }
  std::string damaged = file;
  damaged[file.size() / 2] = static_cast<char>(~damaged[file.size() / 2]);
  EXPECT_NE(read(damaged).problem, "");
}

TEST(OptimisedPng, LengthsThatLeadOutOfTheFile) {
  const std::string file = optimised(2, 1, PNG_COLOR_TYPE_RGB, {1, 2, 3, 40, 50, 60});
  for (const std::uint32_t length : {0U, 5U, 1000U, 0x7fffffffU, 0xffffffffU}) {
    std::string first = file;
    first.replace(8, 4, number(length));
    EXPECT_EQ(read(first).problem, kDamaged) << length;
    std::string data = file;
    data.replace(data.find("IDAT") - 4, 4, number(length));
    const Outcome outcome = read(data);
    EXPECT_NE(outcome.problem.empty(), !outcome.picture) << length;
  }
  EXPECT_EQ(read(optimised(65'535, 65'535, PNG_COLOR_TYPE_RGB, Bytes(65'535))).problem,
            "the image is too large (65535 x 65535; 100000000 pixels at most)");
}

}  // namespace
