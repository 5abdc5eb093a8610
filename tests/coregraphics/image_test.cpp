// Images: every pixel format, and what is refused.
#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "objc/autorelease_pool.h"
#include "objc/strong.h"
#include "support/bitmaps.h"

namespace {

using namespace test;

struct Format {
  const char* name;
  Layout layout;
  Bytes bytes;  ///< one pixel
  Bytes rgba;   ///< premultiplied
};

void PrintTo(const Format& format, std::ostream* out) { *out << format.name; }

Layout rgb(std::size_t bits, std::size_t bitsPerPixel, CGBitmapInfo info) {
  return {.bitsPerComponent = bits, .bitsPerPixel = bitsPerPixel, .info = info};
}
Layout grey(std::size_t bits, std::size_t bitsPerPixel, CGBitmapInfo info) {
  return {.bitsPerComponent = bits, .bitsPerPixel = bitsPerPixel, .info = info, .isGrey = true};
}

constexpr auto kBig32 = kCGBitmapByteOrder32Big;
constexpr auto kLittle32 = kCGBitmapByteOrder32Little;
constexpr auto kBig16 = kCGBitmapByteOrder16Big;
constexpr auto kLittle16 = kCGBitmapByteOrder16Little;

const Format kFormats[] = {
    {"rgb24", rgb(8, 24, kCGImageAlphaNone), {1, 2, 3}, {1, 2, 3, 255}},
    {"rgb32 none", rgb(8, 32, kCGImageAlphaNone), {1, 2, 3, 9}, {1, 2, 3, 255}},
    {"rgbx", rgb(8, 32, kCGImageAlphaNoneSkipLast), {1, 2, 3, 9}, {1, 2, 3, 255}},
    {"xrgb", rgb(8, 32, kCGImageAlphaNoneSkipFirst), {9, 1, 2, 3}, {1, 2, 3, 255}},
    {"rgba", rgb(8, 32, kCGImageAlphaPremultipliedLast), {1, 2, 3, 4}, {1, 2, 3, 4}},
    {"argb", rgb(8, 32, kCGImageAlphaPremultipliedFirst), {4, 1, 2, 3}, {1, 2, 3, 4}},
    {"straight rgba", rgb(8, 32, kCGImageAlphaLast), {100, 50, 200, 128}, {50, 25, 100, 128}},
    {"straight argb", rgb(8, 32, kCGImageAlphaFirst), {128, 100, 50, 200}, {50, 25, 100, 128}},
    {"straight clear", rgb(8, 32, kCGImageAlphaLast), {100, 50, 200, 0}, {0, 0, 0, 0}},
    {"straight opaque", rgb(8, 32, kCGImageAlphaLast), {100, 50, 200, 255}, {100, 50, 200, 255}},
    {"big rgba", rgb(8, 32, kCGImageAlphaPremultipliedLast | kBig32), {1, 2, 3, 4}, {1, 2, 3, 4}},
    {"bgra", rgb(8, 32, kCGImageAlphaPremultipliedFirst | kLittle32), {3, 2, 1, 4}, {1, 2, 3, 4}},
    {"abgr", rgb(8, 32, kCGImageAlphaPremultipliedLast | kLittle32), {4, 3, 2, 1}, {1, 2, 3, 4}},
    {"bgrx", rgb(8, 32, kCGImageAlphaNoneSkipFirst | kLittle32), {3, 2, 1, 9}, {1, 2, 3, 255}},
    {"xbgr", rgb(8, 32, kCGImageAlphaNoneSkipLast | kLittle32), {9, 3, 2, 1}, {1, 2, 3, 255}},
    {"little none", rgb(8, 32, kCGImageAlphaNone | kLittle32), {9, 3, 2, 1}, {1, 2, 3, 255}},
    {"straight bgra",
     rgb(8, 32, kCGImageAlphaFirst | kLittle32),
     {200, 50, 100, 128},
     {50, 25, 100, 128}},
    {"straight abgr",
     rgb(8, 32, kCGImageAlphaLast | kLittle32),
     {128, 200, 50, 100},
     {50, 25, 100, 128}},
    {"pairs swapped",
     rgb(8, 32, kCGImageAlphaPremultipliedLast | kLittle16),
     {2, 1, 4, 3},
     {1, 2, 3, 4}},
    {"grey", grey(8, 8, kCGImageAlphaNone), {77}, {77, 77, 77, 255}},
    {"grey wide", grey(8, 16, kCGImageAlphaNone), {77, 9}, {77, 77, 77, 255}},
    {"grey alpha", grey(8, 16, kCGImageAlphaPremultipliedLast), {77, 99}, {77, 77, 77, 99}},
    {"alpha grey", grey(8, 16, kCGImageAlphaPremultipliedFirst), {99, 77}, {77, 77, 77, 99}},
    {"grey straight", grey(8, 16, kCGImageAlphaLast), {100, 128}, {50, 50, 50, 128}},
    {"alpha only", grey(8, 8, kCGImageAlphaOnly), {99}, {0, 0, 0, 99}},
    {"rgb48", rgb(16, 48, kCGImageAlphaNone), {1, 0, 2, 0, 3, 0}, {1, 2, 3, 255}},
    {"rgb48 pairs", rgb(16, 48, kCGImageAlphaNone | kLittle16), {0, 1, 0, 2, 0, 3}, {1, 2, 3, 255}},
    {"rgba64",
     rgb(16, 64, kCGImageAlphaPremultipliedLast | kBig16),
     {1, 0, 2, 0, 3, 0, 4, 0},
     {1, 2, 3, 4}},
    {"rgba64 pairs",
     rgb(16, 64, kCGImageAlphaPremultipliedLast | kLittle16),
     {0, 1, 0, 2, 0, 3, 0, 4},
     {1, 2, 3, 4}},
    {"rgba64 words",
     rgb(16, 64, kCGImageAlphaPremultipliedLast | kLittle32),
     {0, 2, 0, 1, 0, 4, 0, 3},
     {1, 2, 3, 4}},
    {"rgb64 none", rgb(16, 64, kCGImageAlphaNone), {1, 0, 2, 0, 3, 0, 9, 9}, {1, 2, 3, 255}},
    {"grey16", grey(16, 16, kCGImageAlphaNone), {0x80, 0x80}, {128, 128, 128, 255}},
    {"grey16 little", grey(16, 16, kCGImageAlphaNone | kLittle16), {0, 77}, {77, 77, 77, 255}},
    {"grey16 rounded", grey(16, 16, kCGImageAlphaNone), {0x81, 0x00}, {128, 128, 128, 255}},
    {"grey16 rounded up", grey(16, 16, kCGImageAlphaNone), {0x81, 0x01}, {129, 129, 129, 255}},
    {"grey16 alpha", grey(16, 32, kCGImageAlphaPremultipliedLast), {1, 0, 4, 0}, {1, 1, 1, 4}},
    {"brighter than alpha", rgb(8, 32, kCGImageAlphaPremultipliedLast), {9, 4, 3, 4}, {9, 4, 3, 4}},
};

CGBitmapInfo alphaOf(const Layout& layout) { return layout.info & kCGBitmapAlphaInfoMask; }

void append(Bytes& to, const Bytes& bytes) { to.insert(to.end(), bytes.begin(), bytes.end()); }

class EveryFormat : public testing::TestWithParam<Format> {};

TEST_P(EveryFormat, IsDrawnAsItsPixelsSay) {
  const Bitmap image(createImage(GetParam().bytes, GetParam().layout));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(drawn(image), GetParam().rgba);
}

/// Rows longer than the part that is converted at once, with padding between them; the last row has
/// no padding.
TEST_P(EveryFormat, IsReadAlongTheRows) {
  constexpr std::size_t kWidth = 67;
  Layout layout = GetParam().layout;
  layout.width = kWidth;
  layout.height = 2;
  const Bytes& pixel = GetParam().bytes;
  // Every second pixel is all zeros: black, or transparent.
  const Bytes zeros(pixel.size());
  const bool isOpaque = alphaOf(layout) == kCGImageAlphaNone ||
                        alphaOf(layout) == kCGImageAlphaNoneSkipLast ||
                        alphaOf(layout) == kCGImageAlphaNoneSkipFirst;
  const Bytes black{0, 0, 0, static_cast<std::uint8_t>(isOpaque ? 255 : 0)};
  Bytes bytes;
  Bytes expected;
  for (std::size_t i = 0; i < 2 * kWidth; ++i) {
    append(bytes, i % 2 != 0 ? pixel : zeros);
    append(expected, i % 2 != 0 ? GetParam().rgba : black);
    if (i == kWidth - 1) append(bytes, Bytes(5, 0xee));
  }
  layout.bytesPerRow = kWidth * pixel.size() + 5;
  const Bitmap image(createImage(bytes, layout));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(drawn(image), expected);
}

INSTANTIATE_TEST_SUITE_P(Image, EveryFormat, testing::ValuesIn(kFormats));

TEST(Image, DecodesItsComponents) {
  Layout layout{.bitsPerPixel = 24, .info = kCGImageAlphaNone, .decode = {1, 0, 0, 0.5, 0.5, 1}};
  EXPECT_EQ(drawn(Bitmap(createImage({0, 255, 0}, layout))), (Bytes{255, 128, 128, 255}));
  EXPECT_EQ(drawn(Bitmap(createImage({51, 102, 255}, layout))), (Bytes{204, 51, 255, 255}));
  // Values decoded beyond black or white are limited to them.
  layout.decode = {-1, 0, 1, 5, 0, 1};
  EXPECT_EQ(drawn(Bitmap(createImage({128, 128, 128}, layout))), (Bytes{0, 255, 128, 255}));
}

TEST(Image, DecodesAGreyAndLeavesAlphaAlone) {
  const Layout layout{
      .bitsPerPixel = 16, .info = kCGImageAlphaLast, .isGrey = true, .decode = {1, 0}};
  EXPECT_EQ(drawn(Bitmap(createImage({155, 128}, layout))), (Bytes{50, 50, 50, 128}));
}

TEST(Image, DecodesNoNumberToBlack) {
  const CGFloat nan = std::numeric_limits<CGFloat>::quiet_NaN();
  const CGFloat infinity = std::numeric_limits<CGFloat>::infinity();
  const Layout layout{.bitsPerPixel = 24,
                      .info = kCGImageAlphaNone,
                      .decode = {nan, nan, -infinity, infinity, 0, infinity}};
  EXPECT_EQ(drawn(Bitmap(createImage({1, 2, 3}, layout))), (Bytes{0, 0, 255, 255}));
}

TEST(Image, AnswersItsParameters) {
  const Bitmap image(
      createImage(Bytes(3 * 50), {.width = 5,
                                  .height = 3,
                                  .bitsPerComponent = 16,
                                  .bitsPerPixel = 64,
                                  .info = kCGImageAlphaFirst | kCGBitmapByteOrder16Little,
                                  .bytesPerRow = 50}));
  ASSERT_NE(image, nullptr);
  EXPECT_EQ(CGImageGetWidth(image), 5U);
  EXPECT_EQ(CGImageGetHeight(image), 3U);
  EXPECT_EQ(CGImageGetBitsPerComponent(image), 16U);
  EXPECT_EQ(CGImageGetBitsPerPixel(image), 64U);
  EXPECT_EQ(CGImageGetBytesPerRow(image), 50U);
  EXPECT_EQ(CGImageGetBitmapInfo(image), kCGImageAlphaFirst | kCGBitmapByteOrder16Little);
  EXPECT_EQ(CGImageGetAlphaInfo(image), kCGImageAlphaFirst);
  EXPECT_TRUE(CGImageGetShouldInterpolate(image));
  EXPECT_EQ(CGColorSpaceGetModel(CGImageGetColorSpace(image)), CGColorSpaceModel::rgb);
  EXPECT_EQ(CGColorSpaceGetNumberOfComponents(CGImageGetColorSpace(image)), 3U);
}

TEST(Image, AnswersZeroForNil) {
  EXPECT_EQ(CGImageGetWidth(nullptr), 0U);
  EXPECT_EQ(CGImageGetHeight(nullptr), 0U);
  EXPECT_EQ(CGImageGetBitsPerComponent(nullptr), 0U);
  EXPECT_EQ(CGImageGetBitsPerPixel(nullptr), 0U);
  EXPECT_EQ(CGImageGetBytesPerRow(nullptr), 0U);
  EXPECT_EQ(CGImageGetBitmapInfo(nullptr), 0U);
  EXPECT_EQ(CGImageGetAlphaInfo(nullptr), 0U);
  EXPECT_FALSE(CGImageGetShouldInterpolate(nullptr));
  EXPECT_EQ(CGImageGetColorSpace(nullptr), nullptr);
  EXPECT_EQ(CGImageGetDataProvider(nullptr), nullptr);
  EXPECT_EQ(CGImageRetain(nullptr), nullptr);
  CGImageRelease(nullptr);
}

TEST(Image, IsNoneWhereTheParametersFitNoFormat) {
  const Bytes plenty(4096);
  const Layout layouts[] = {
      {.width = 0},
      {.height = 0},
      {.bitsPerComponent = 5},
      {.bitsPerComponent = 1, .bitsPerPixel = 1, .info = kCGImageAlphaNone, .isGrey = true},
      {.bitsPerComponent = 32, .bitsPerPixel = 128},
      {.bitsPerPixel = 24},  // no room for alpha
      {.bitsPerPixel = 40},  // more than its components need
      {.bitsPerPixel = 16, .info = kCGImageAlphaNone},
      {.bitsPerPixel = 30, .info = kCGImageAlphaNone},
      {.bitsPerComponent = 16, .bitsPerPixel = 32},
      {.info = kRgba | kCGBitmapFloatComponents},
      {.info = 8},                // an alpha position that does not exist
      {.info = kRgba | 5 << 12},  // a byte order that does not exist
      {.bitsPerPixel = 24, .info = kCGImageAlphaNone | kCGBitmapByteOrder32Little},
      {.bitsPerPixel = 24, .info = kCGImageAlphaNone | kCGBitmapByteOrder16Little},
      {.bitsPerPixel = 32, .info = kRgba, .isGrey = true},
      {.width = 2, .bytesPerRow = 7},  // shorter than its pixels
      {.width = 1025},                 // more than the bytes hold
      {.height = 1025},
      {.width = ~std::size_t{0} / 4 + 1, .bytesPerRow = 4},
      {.height = ~std::size_t{0} / 4 + 1, .bytesPerRow = 4},
      {.width = 4, .height = 4, .bytesPerRow = SIZE_MAX / 2},
      {.width = 4, .height = 2, .bytesPerRow = SIZE_MAX - 3},
      {.width = SIZE_MAX / 4 + 2, .bytesPerRow = 4},
  };
  for (std::size_t i = 0; i < std::size(layouts); ++i)
    EXPECT_EQ(Bitmap(createImage(plenty, layouts[i])), nullptr) << i;
}

TEST(Image, NeedsASpaceAndAProvider) {
  const Bytes bytes(4);
  const Space space(CGColorSpaceCreateDeviceRGB());
  const Provider provider(CGDataProviderCreateWithData(nullptr, bytes.data(), 4, nullptr));
  const Provider empty(CGDataProviderCreateWithData(nullptr, nullptr, 4, nullptr));
  auto make = [](CGColorSpaceRef in, CGDataProviderRef from) {
    return CGImageCreate(1, 1, 8, 32, 4, in, kRgba, from, nullptr, false,
                         CGColorRenderingIntent::standard);
  };
  EXPECT_EQ(Bitmap(make(nullptr, provider)), nullptr);
  EXPECT_EQ(Bitmap(make(space, nullptr)), nullptr);
  EXPECT_EQ(Bitmap(make(space, empty)), nullptr);
  EXPECT_NE(Bitmap(make(space, provider)), nullptr);
}

TEST(Image, NeedsNoPaddingBehindTheLastRow) {
  const Bytes bytes{1, 2, 3, 4, 0, 0, 5, 6, 7, 8};
  EXPECT_EQ(drawn(Bitmap(createImage(bytes, {.height = 2, .bytesPerRow = 6}))),
            (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));
  EXPECT_EQ(Bitmap(createImage(Bytes(9), {.height = 2, .bytesPerRow = 6})), nullptr);
}

TEST(Image, KeepsItsBytesAsTheyWereGiven) {
  const objc::AutoreleasePool pool;
  const Bytes bytes = noise(40);
  const Bitmap image(
      createImage(bytes, {.width = 2, .height = 4, .info = kCGImageAlphaLast, .bytesPerRow = 10}));
  const auto copy = Strong<NSData>::adopt(CGDataProviderCopyData(CGImageGetDataProvider(image)));
  ASSERT_NE(copy, nullptr);
  const auto* at = static_cast<const std::uint8_t*>(send(copy, NSData::bytes));
  EXPECT_EQ(Bytes(at, at + send(copy, NSData::length)), bytes);
}

TEST(Image, OutlivesWhatItWasMadeOf) {
  const Bytes pixel{1, 2, 3, 4};
  CGImageRef image = createImage(pixel, {});
  const Bitmap second(CGImageRetain(image));
  CGImageRelease(image);
  EXPECT_EQ(drawn(second), pixel);
}

struct Releases {
  int count = 0;
  const void* data = nullptr;
  std::size_t size = 0;
};

void note(void* info, const void* data, std::size_t size) {
  auto* releases = static_cast<Releases*>(info);
  *releases = {releases->count + 1, data, size};
}

TEST(Provider, GivesTheDataBackOnceNobodyNeedsIt) {
  const Bytes bytes(4);
  Releases releases;
  CGDataProviderRef provider = CGDataProviderCreateWithData(&releases, bytes.data(), 4, &note);
  const Space space(CGColorSpaceCreateDeviceRGB());
  CGImageRef image = CGImageCreate(1, 1, 8, 32, 4, space, kRgba, provider, nullptr, false,
                                   CGColorRenderingIntent::standard);
  CGDataProviderRelease(provider);
  EXPECT_EQ(releases.count, 0);
  drawn(image);
  EXPECT_EQ(releases.count, 0);
  CGImageRelease(image);
  EXPECT_EQ(releases.count, 1);
  EXPECT_EQ(releases.data, bytes.data());
  EXPECT_EQ(releases.size, 4U);
}

TEST(Provider, GivesTheDataBackWhereNoImageComesOfIt) {
  Releases releases;
  CGDataProviderRef provider = CGDataProviderCreateWithData(&releases, nullptr, 0, &note);
  CGDataProviderRelease(provider);
  EXPECT_EQ(releases.count, 1);
}

TEST(Provider, HoldsItsData) {
  CGDataProviderRef provider = nullptr;
  {
    const objc::AutoreleasePool pool;
    provider = CGDataProviderCreateWithCFData(NSData::dataWithBytes("abc", 3));
  }
  const objc::AutoreleasePool pool;
  const auto copy = Strong<NSData>::adopt(CGDataProviderCopyData(provider));
  CGDataProviderRelease(provider);
  EXPECT_EQ(
      std::string(static_cast<const char*>(send(copy, NSData::bytes)), send(copy, NSData::length)),
      "abc");
}

TEST(Provider, IsNoneForNil) {
  EXPECT_EQ(CGDataProviderCreateWithCFData(nullptr), nullptr);
  EXPECT_EQ(CGDataProviderCopyData(nullptr), nullptr);
  CGDataProviderRelease(nullptr);
}

TEST(ColorSpace, KnowsItsModelAndItsComponents) {
  const Space rgb(CGColorSpaceCreateDeviceRGB());
  const Space grey(CGColorSpaceCreateDeviceGray());
  EXPECT_EQ(CGColorSpaceGetModel(rgb), CGColorSpaceModel::rgb);
  EXPECT_EQ(CGColorSpaceGetModel(grey), CGColorSpaceModel::monochrome);
  EXPECT_EQ(CGColorSpaceGetModel(nullptr), CGColorSpaceModel::unknown);
  EXPECT_EQ(CGColorSpaceGetNumberOfComponents(rgb), 3U);
  EXPECT_EQ(CGColorSpaceGetNumberOfComponents(grey), 1U);
  EXPECT_EQ(CGColorSpaceGetNumberOfComponents(nullptr), 0U);
  EXPECT_EQ(CGColorSpaceRetain(nullptr), nullptr);
  CGColorSpaceRelease(nullptr);
}

TEST(Color, HasItsSpacesComponentsAndAlpha) {
  const Space rgb(CGColorSpaceCreateDeviceRGB());
  const Space grey(CGColorSpaceCreateDeviceGray());
  const CGFloat components[] = {0.1, 0.2, 0.3, 0.4};
  const objc::Owned<CGColorRef, &CGColorRelease> color(CGColorCreate(rgb, components));
  ASSERT_EQ(CGColorGetNumberOfComponents(color), 4U);
  EXPECT_EQ(CGColorGetComponents(color)[2], components[2]);
  EXPECT_EQ(CGColorGetComponents(color)[3], components[3]);
  const objc::Owned<CGColorRef, &CGColorRelease> white(CGColorCreate(grey, components));
  ASSERT_EQ(CGColorGetNumberOfComponents(white), 2U);
  EXPECT_EQ(CGColorGetComponents(white)[1], components[1]);
}

TEST(Color, IsNoneForNil) {
  const Space rgb(CGColorSpaceCreateDeviceRGB());
  const CGFloat components[4] = {};
  EXPECT_EQ(CGColorCreate(nullptr, components), nullptr);
  EXPECT_EQ(CGColorCreate(rgb, nullptr), nullptr);
  EXPECT_EQ(CGColorGetNumberOfComponents(nullptr), 0U);
  EXPECT_EQ(CGColorGetComponents(nullptr), nullptr);
  CGColorRelease(nullptr);
}

}  // namespace
