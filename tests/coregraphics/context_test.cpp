// Contexts over memory: which ones are possible, and what drawing leaves in the bytes.
#include <gtest/gtest.h>

#include <string>

#include "Foundation/log.h"
#include "support/bitmaps.h"

namespace {

using namespace test;

constexpr auto kBig = kCGBitmapByteOrder32Big;
constexpr auto kLittle = kCGBitmapByteOrder32Little;

struct Format {
  const char* name;
  CGBitmapInfo info;
  bool isGrey;
  Bytes white;  ///< one pixel: all bytes five at first, then filled with opaque (51, 102, 204)
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.name; }

const Format kFormats[] = {
    {"rgba", kCGImageAlphaPremultipliedLast, false, {51, 102, 204, 255}},
    {"argb", kCGImageAlphaPremultipliedFirst, false, {255, 51, 102, 204}},
    {"rgbx", kCGImageAlphaNoneSkipLast, false, {51, 102, 204, 5}},
    {"xrgb", kCGImageAlphaNoneSkipFirst, false, {5, 51, 102, 204}},
    {"big rgba", kCGImageAlphaPremultipliedLast | kBig, false, {51, 102, 204, 255}},
    {"big argb", kCGImageAlphaPremultipliedFirst | kBig, false, {255, 51, 102, 204}},
    {"big rgbx", kCGImageAlphaNoneSkipLast | kBig, false, {51, 102, 204, 5}},
    {"big xrgb", kCGImageAlphaNoneSkipFirst | kBig, false, {5, 51, 102, 204}},
    {"abgr", kCGImageAlphaPremultipliedLast | kLittle, false, {255, 204, 102, 51}},
    {"bgra", kCGImageAlphaPremultipliedFirst | kLittle, false, {204, 102, 51, 255}},
    {"xbgr", kCGImageAlphaNoneSkipLast | kLittle, false, {5, 204, 102, 51}},
    {"bgrx", kCGImageAlphaNoneSkipFirst | kLittle, false, {204, 102, 51, 5}},
    {"grey", kCGImageAlphaNone, true, {98}},  // 0.299, 0.587 and 0.114 of the components
    {"alpha only", kCGImageAlphaOnly, true, {255}},
};

CGContextRef createContext(Bytes& bytes, std::size_t width, std::size_t height,
                           std::size_t bytesPerRow, const Format& format) {
  const Space space(format.isGrey ? CGColorSpaceCreateDeviceGray() : CGColorSpaceCreateDeviceRGB());
  return CGBitmapContextCreate(bytes.data(), width, height, 8, bytesPerRow, space, format.info);
}

void fill(CGContextRef context, CGRect rect) {
  CGContextSetRGBFillColor(context, 0.2, 0.4, 0.8, 1);
  CGContextFillRect(context, rect);
}

void append(Bytes& to, const Bytes& bytes) { to.insert(to.end(), bytes.begin(), bytes.end()); }

class EveryContext : public testing::TestWithParam<Format> {};

TEST_P(EveryContext, LeavesItsPixelsInMemory) {
  const std::size_t size = GetParam().white.size();
  Bytes bytes(size, 5);
  const Context context(createContext(bytes, 1, 1, size, GetParam()));
  ASSERT_NE(context, nullptr);
  fill(context, {{0, 0}, {1, 1}});
  EXPECT_EQ(bytes, GetParam().white);
}

/// Fills the lower right pixel of 3 x 2; the other pixels and the padding stay as they were.
TEST_P(EveryContext, LeavesWhatIsNotDrawnOn) {
  const std::size_t size = GetParam().white.size();
  const std::size_t row = 3 * size + 4;
  Bytes bytes(row * 2, 5);
  const Context context(createContext(bytes, 3, 2, row, GetParam()));
  ASSERT_NE(context, nullptr);
  fill(context, {{2, 0}, {1, 1}});
  Bytes expected(row + 2 * size, 5);
  append(expected, GetParam().white);
  append(expected, Bytes(4, 5));
  EXPECT_EQ(bytes, expected);
}

TEST_P(EveryContext, TakesRowsAtAnyAddress) {
  const std::size_t size = GetParam().white.size();
  const std::size_t row = size + 1;
  Bytes bytes(1 + row * 2, 5);
  const Space space(GetParam().isGrey ? CGColorSpaceCreateDeviceGray()
                                      : CGColorSpaceCreateDeviceRGB());
  const Context context(
      CGBitmapContextCreate(bytes.data() + 1, 1, 2, 8, row, space, GetParam().info));
  ASSERT_NE(context, nullptr);
  fill(context, {{0, 0}, {1, 2}});
  Bytes expected{5};
  for (int i = 0; i < 2; ++i) {
    append(expected, GetParam().white);
    expected.push_back(5);
  }
  EXPECT_EQ(bytes, expected);
}

TEST_P(EveryContext, HasAnImageOfItsFormat) {
  const std::size_t size = GetParam().white.size();
  Bytes bytes(size * 4, 0);
  const Context context(createContext(bytes, 4, 1, size * 4, GetParam()));
  fill(context, {{1, 0}, {1, 1}});
  const Bitmap image(CGBitmapContextCreateImage(context));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(CGImageGetBitmapInfo(image), GetParam().info);
  EXPECT_EQ(CGImageGetBitsPerPixel(image), size * 8);
  // Later drawing does not change the image.
  CGContextFillRect(context, {{0, 0}, {4, 1}});
  Bytes again(size * 4, 0);
  const Context other(createContext(again, 4, 1, size * 4, GetParam()));
  CGContextDrawImage(other, {{0, 0}, {4, 1}}, image);
  Bytes expected(size, 0);
  append(expected, GetParam().white);
  append(expected, Bytes(size * 2, 0));
  // Skipped bytes of the destination keep their values.
  for (std::size_t i = 0; i < size; ++i) {
    if (GetParam().white[i] == 5) expected[size + i] = 0;
  }
  EXPECT_EQ(again, expected);
}

INSTANTIATE_TEST_SUITE_P(Context, EveryContext, testing::ValuesIn(kFormats));

TEST(Context, BringsItsOwnMemory) {
  const Space space(CGColorSpaceCreateDeviceRGB());
  const Context context(CGBitmapContextCreate(nullptr, 3, 2, 8, 0, space, kRgba));
  ASSERT_NE(context, nullptr);
  EXPECT_EQ(CGBitmapContextGetWidth(context), 3U);
  EXPECT_EQ(CGBitmapContextGetHeight(context), 2U);
  EXPECT_GE(CGBitmapContextGetBytesPerRow(context), 12U);
  EXPECT_EQ(CGBitmapContextGetBitmapInfo(context), kRgba);
  EXPECT_EQ(CGBitmapContextGetColorSpace(context), space);
  const auto* memory = static_cast<const std::uint8_t*>(CGBitmapContextGetData(context));
  const std::size_t row = CGBitmapContextGetBytesPerRow(context);
  EXPECT_EQ(Bytes(memory, memory + row * 2), Bytes(row * 2));
  fill(context, {{0, 0}, {1, 1}});
  EXPECT_EQ(Bytes(memory + row, memory + row + 4), (Bytes{51, 102, 204, 255}));
}

TEST(Context, AnswersTheMemoryItWasGiven) {
  Bytes bytes;
  const Context context(test::createContext(bytes, 3, 2, kBgra, 20));
  EXPECT_EQ(CGBitmapContextGetData(context), bytes.data());
  EXPECT_EQ(CGBitmapContextGetBytesPerRow(context), 20U);
}

TEST(Context, IsNoneWhereThePlatformHasNoSuch) {
  const Space rgb(CGColorSpaceCreateDeviceRGB());
  const Space grey(CGColorSpaceCreateDeviceGray());
  struct {
    std::size_t width = 1, height = 1, bits = 8, bytesPerRow = 64;
    bool isGrey = false;
    CGBitmapInfo info = kRgba;
  } const kCases[] = {
      {.width = 0},
      {.height = 0},
      {.width = 17},  // longer than a row
      {.width = 100'000, .bytesPerRow = 400'000},
      {.height = 100'000},
      {.width = ~std::size_t{0} / 4 + 1},
      {.height = ~std::size_t{0} / 4 + 1},
      {.bytesPerRow = 0},
      {.height = 3, .bytesPerRow = SIZE_MAX / 2},
      {.bits = 5},
      {.bits = 16},
      {.bits = 32, .info = kRgba | kCGBitmapFloatComponents},
      {.info = kRgba | kCGBitmapFloatComponents},
      {.info = kCGImageAlphaNone},
      {.info = kCGImageAlphaLast},
      {.info = kCGImageAlphaFirst},
      {.info = 8},
      {.info = kRgba | kCGBitmapByteOrder16Little},
      {.info = kRgba | kCGBitmapByteOrder16Big},
      {.info = kRgba | 5 << 12},
      {.isGrey = true, .info = kRgba},
      {.isGrey = true, .info = kCGImageAlphaNoneSkipLast},
      {.isGrey = true, .info = kCGImageAlphaPremultipliedFirst},
  };
  Bytes memory(1024, 5);
  for (std::size_t i = 0; i < std::size(kCases); ++i) {
    const auto& c = kCases[i];
    const Context context(CGBitmapContextCreate(memory.data(), c.width, c.height, c.bits,
                                                c.bytesPerRow, c.isGrey ? grey : rgb, c.info));
    EXPECT_EQ(context, nullptr) << i;
    ASSERT_EQ(host::logLines().size(), i + 1);
  }
  EXPECT_EQ(Context(CGBitmapContextCreate(memory.data(), 1, 1, 8, 4, nullptr, kRgba)), nullptr);
  EXPECT_EQ(memory, Bytes(1024, 5));
}

TEST(Context, SaysWhyThereIsNone) {
  const Space grey(CGColorSpaceCreateDeviceGray());
  EXPECT_EQ(CGBitmapContextCreate(nullptr, 2, 3, 8, 4, grey, kRgba), nullptr);
  ASSERT_EQ(host::logLines().size(), 1U);
  EXPECT_EQ(host::logLines()[0].line,
            "CGBitmapContextCreate: unsupported parameter combination: 2 x 3, 8 bits a component, "
            "4 bytes a row, bitmap info 1; a side has 32767 pixels at most");
}

TEST(Context, AnswersNothingForNil) {
  EXPECT_EQ(CGBitmapContextCreateImage(nullptr), nullptr);
  EXPECT_EQ(CGBitmapContextGetData(nullptr), nullptr);
  EXPECT_EQ(CGBitmapContextGetWidth(nullptr), 0U);
  EXPECT_EQ(CGBitmapContextGetHeight(nullptr), 0U);
  EXPECT_EQ(CGBitmapContextGetBytesPerRow(nullptr), 0U);
  EXPECT_EQ(CGBitmapContextGetBitmapInfo(nullptr), 0U);
  EXPECT_EQ(CGBitmapContextGetColorSpace(nullptr), nullptr);
  CGContextRelease(nullptr);
}

}  // namespace
